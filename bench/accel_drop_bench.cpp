// One accelerometer drop of 15000 samples: analysed, written as its text file, and read back in both forms.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "daq/drop_file_reader.h"
#include "platform/files.h"
#include "platform/numbers.h"
#include "platform/text.h"
#include "reference/accel_analysis.h"
#include "reference/accel_drop_file.h"
#include "reference/trigger_search.h"
#include "tests/reference/made_accel_block.h"

namespace {

using namespace bellmark;

/// A pulse of 500 microns and its rebounds, with noise.
const MadeAccelBlock& Block() {
    static const MadeAccelBlock block{15000, 1,  0.006, 0, {{3600, 400, 500}, {6700, 400, 175}, {9000, 400, 60}},
                                      {},    {}, 0.06};
    return block;
}

const CenterConfig& Center() {
    static const CenterConfig center = MadeCenter(Block().level);
    return center;
}

DropRecord AnalysedDrop() {
    DropRecord drop = DropOf(VoltsOf(Block()));
    AnalyzeAccelSamples(drop, Center());
    return drop;
}

std::string SavedText() {
    return AccelDropFileText(AnalysedDrop(), {}, Center(), MakeDateTime(2012, 3, 9));
}

void AnalyseAccelDrop(benchmark::State& state) {
    DropRecord drop = DropOf(VoltsOf(Block()));
    for (auto _ : state) {
        benchmark::DoNotOptimize(AnalyzeAccelSamples(drop, Center()));
        benchmark::ClobberMemory();
    }
}
BENCHMARK(AnalyseAccelDrop)->Unit(benchmark::kMillisecond);

/// 100 levels.
void SearchTriggerLevel(benchmark::State& state) {
    const DropRecord drop = AnalysedDrop();
    for (auto _ : state) benchmark::DoNotOptimize(DetermineTrigger(drop));
}
BENCHMARK(SearchTriggerLevel)->Unit(benchmark::kMillisecond);

/// The whole way of the file but for the wait until the disk has it.
void WriteAccelDropFile(benchmark::State& state) {
    const DropRecord drop = AnalysedDrop();
    const Path path = std::filesystem::temp_directory_path() / "bellmark-bench-accel-drop.txt";
    for (auto _ : state) {
        std::string text = AccelDropFileText(drop, {}, Center(), MakeDateTime(2012, 3, 9));
        ConvertToWindows1252(text);
        std::ofstream(path, std::ios::binary) << text;
    }
    std::filesystem::remove(path);
}
BENCHMARK(WriteAccelDropFile)->Unit(benchmark::kMillisecond);

void ReadFile(benchmark::State& state, const std::string& text, DropSamples (*read)(std::string_view)) {
    DiskFileSystem files;
    const Path path = std::filesystem::temp_directory_path() / "bellmark-bench-accel-read.txt";
    files.ReplaceFile(path, ToWindows1252(text));
    for (auto _ : state) benchmark::DoNotOptimize(read(files.ReadBytes(path)));
    files.RemoveFile(path);
}

void ReadSavedAccelDrop(benchmark::State& state) {
    ReadFile(state, SavedText(), ReadSavedDropFile);
}
BENCHMARK(ReadSavedAccelDrop)->Unit(benchmark::kMillisecond);

void ReadAccelTemplate(benchmark::State& state) {
    std::string text;
    for (const float volts : VoltsOf(Block())) text += NumberText(volts) + "\r\n";
    ReadFile(state, text, ReadTemplateFile);
}
BENCHMARK(ReadAccelTemplate)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
