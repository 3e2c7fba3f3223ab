// One load cell drop of 15000 samples: analysed, written as its text file, and read back in both forms.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "daq/drop_file_reader.h"
#include "platform/files.h"
#include "platform/numbers.h"
#include "platform/text.h"
#include "reference/drop_file.h"
#include "reference/load_analysis.h"
#include "virtual_fwd/virtual_center.h"

namespace {

using namespace bellmark;

const CenterConfig& Center() {
    static const CenterConfig center = virtual_fwd::VirtualCenter(false, MakeDateTime(2012, 3, 9));
    return center;
}

const std::vector<float>& Volts() {
    static const std::vector<float> volts = [] {
        virtual_fwd::PulseModel pulse;
        pulse.peakPounds = 9000;
        pulse.noisePounds = 6;
        Random random(1);
        return virtual_fwd::CaptureVolts({Center().ReferenceLoadCellCalibrationCoefficients, 12, 1}, pulse, random);
    }();
    return volts;
}

DropRecord CapturedDrop() {
    DropRecord drop;
    std::copy(Volts().begin(), Volts().end(), drop.RawVolts.begin());
    drop.NumSamples = static_cast<int>(Volts().size());
    return drop;
}

DropRecord AnalysedDrop() {
    DropRecord drop = CapturedDrop();
    AnalyzeLoadSamples(drop, Center(), true);
    return drop;
}

std::string SavedText() {
    return LoadDropFileText(AnalysedDrop(), {}, Center(), MakeDateTime(2012, 3, 9));
}

void AnalyseLoadDrop(benchmark::State& state) {
    DropRecord drop = CapturedDrop();
    for (auto _ : state) {
        benchmark::DoNotOptimize(AnalyzeLoadSamples(drop, Center(), true));
        benchmark::ClobberMemory();
    }
}
BENCHMARK(AnalyseLoadDrop)->Unit(benchmark::kMillisecond);

/// The whole way of the file but for the wait until the disk has it.
void WriteDropFile(benchmark::State& state) {
    const DropRecord drop = AnalysedDrop();
    const Path path = std::filesystem::temp_directory_path() / "bellmark-bench-drop.txt";
    for (auto _ : state) {
        std::string text = LoadDropFileText(drop, {}, Center(), MakeDateTime(2012, 3, 9));
        ConvertToWindows1252(text);
        std::ofstream(path, std::ios::binary) << text;
    }
    std::filesystem::remove(path);
}
BENCHMARK(WriteDropFile)->Unit(benchmark::kMillisecond);

/// As the program does it: beside the old file, flushed to disk, renamed, and the folder flushed.
void WriteDropFileSafely(benchmark::State& state) {
    const DropRecord drop = AnalysedDrop();
    DiskFileSystem files;
    const Path path = std::filesystem::temp_directory_path() / "bellmark-bench-drop.txt";
    for (auto _ : state) {
        ReplaceTextFile(files, path, LoadDropFileText(drop, {}, Center(), MakeDateTime(2012, 3, 9)));
    }
    files.RemoveFile(path);
}
BENCHMARK(WriteDropFileSafely)->Unit(benchmark::kMillisecond)->UseRealTime();

void ReadFile(benchmark::State& state, const std::string& text, DropSamples (*read)(std::string_view)) {
    DiskFileSystem files;
    const Path path = std::filesystem::temp_directory_path() / "bellmark-bench-read.txt";
    files.ReplaceFile(path, text);
    for (auto _ : state) benchmark::DoNotOptimize(read(files.ReadBytes(path)));
    files.RemoveFile(path);
}

void ReadSavedDrop(benchmark::State& state) {
    ReadFile(state, SavedText(), ReadSavedDropFile);
}
BENCHMARK(ReadSavedDrop)->Unit(benchmark::kMillisecond);

void ReadTemplate(benchmark::State& state) {
    std::string text;
    for (const float volts : Volts()) text += NumberText(volts) + "\r\n";
    ReadFile(state, text, ReadTemplateFile);
}
BENCHMARK(ReadTemplate)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
