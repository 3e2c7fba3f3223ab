#include "daq/frm_simulator.h"

#include <algorithm>

#include "app/program.h"
#include "daq/drop_header.h"
#include "platform/dialogs.h"
#include "platform/format.h"
#include "platform/machine.h"
#include "platform/numbers.h"
#include "run/paths.h"
#include "run/trial.h"

namespace bellmark {

namespace {
constexpr int replayChunk = 500;  ///< samples per tick: 30 ticks for a whole block
constexpr int wholeBlockTicks = mostSamples / replayChunk;
}  // namespace

frmSimulator::frmSimulator(Program& program)
    : Screen(program.Screens, "frmSimulator", "Simulated Board"), program_(program), samples_(sampleCapacity) {
    Timer1.Tick = [this] { Timer1_Tick(); };
    TriggerThreshold = static_cast<int>(RoundToWhole(program_.Center.AccelSensitivity));
}

void frmSimulator::SetFile(const std::string& baseName) {
    sourceName_ = baseName;
    source_ = Source::File;
}

void frmSimulator::SetRandom(float mean, float amplitude) {
    randomMean_ = mean;
    randomAmplitude_ = amplitude;
    source_ = Source::RandomVolts;
}

void frmSimulator::Unload() {
    Timer1.Stop();
}

float frmSimulator::OneConversion(int) {
    Random& random = program_.Services.random;
    const double volts = random.Next() * 10;
    return static_cast<float>(volts * RandomSign(random));
}

void frmSimulator::CaptureBlock(int) {
    stopRequested_ = false;
    if (source_ == Source::RandomVolts) {
        LoadRandom();
    } else {
        LoadFile();
    }
    DrawChart();
    replayRemaining_ = sampleCount_;
    if (replayRemaining_ == 0) {
        // No samples will come: the wait ends.
        program_.Run.DropAborted = true;
        return;
    }
    // blockCaptured_ is not reset: the samples are complete already, and the replay is only shown.
    if (program_.Services.simulatedCapture.count() == 0) {
        EndReplay();
    } else {
        Timer1.SetInterval(program_.Services.simulatedCapture / wholeBlockTicks);
        Timer1.Start();
    }
}

void frmSimulator::Timer1_Tick() {
    replayRemaining_ -= std::min(replayRemaining_, replayChunk);
    if (replayRemaining_ == 0 || stopRequested_) EndReplay();
}

void frmSimulator::EndReplay() {
    Timer1.Stop();
    blockCaptured_ = true;
}

void frmSimulator::GetResultsVolts(std::vector<float>& volts, int& count) {
    // One element after the last sample is copied too; it is 0, or left from a longer block.
    std::copy_n(samples_.begin(), sampleCount_ + 1, volts.begin());
    count = sampleCount_;
}

void frmSimulator::LoadRandom() {
    lowest_ = 1e20F;
    highest_ = -1e20F;
    for (float& sample : samples_) {
        const double uniform = program_.Services.random.Next();
        sample = static_cast<float>(2 * randomAmplitude_ * (uniform - 0.5) + randomMean_);
        lowest_ = std::min(lowest_, sample);
        highest_ = std::max(highest_, sample);
    }
    sampleCount_ = mostSamples;
    lblSource.Caption = "Random volts";
}

Path frmSimulator::TemplatePath(const Path& folder) const {
    const CalibrationRun& run = program_.Run;
    const int index = (run.CurrentHeightIndex - 1) * run.NumberDropsPerLoadLevel + run.CurrentDropIndex - 1;
    return folder / PathFromText(sourceName_ + '_' + Format(index, "000") + ".txt");
}

Path frmSimulator::SavedDropPath(const Path& folder) const {
    const CalibrationRun& run = program_.Run;
    const DropPlace place{run.CurrentHeightIndex, run.CurrentDropIndex};
    switch (run.CurrentProcedure) {
        case Procedure::Sensors:
        case Procedure::LoadCell:
            return folder / DropFileName(run.CurrentProcedure, NumberOfTrialShown(run), place);
        case Procedure::TriggerLevel:
        case Procedure::NumberOfDrops:
            return folder / DropFileName(Procedure::Sensors, run.RefTrials + 1, {place.height, 1});
        default:
            return TemplatePath(folder);
    }
}

void frmSimulator::LoadFile() {
    const FileSystem& files = program_.Services.files;
    const Path folder = program_.Run.Trial.ReplayMode() ? program_.InterimFolder() : program_.SimDataFolder();
    Path path = ActualPath(files, TemplatePath(folder));
    const bool isTemplate = files.IsFile(path);
    if (!isTemplate) path = ActualPath(files, SavedDropPath(folder));
    lblSource.Caption = PathText(path);
    sampleCount_ = 0;
    if (!isTemplate) {
        program_.Drop.BurstAverage = 0;
        program_.Drop.BurstStdDev = 0;
    }
    try {
        const std::string text = files.ReadBytes(path);
        const DropSamples read = isTemplate ? ReadTemplateFile(text) : ReadSavedDropFile(text);
        if (!isTemplate) TakeDropHeader(read.header, program_.Center, program_.Drop);
        TakeSamples(read);
        if (!read.complete) {
            TellFileProblem(path);
        } else if (read.volts.empty()) {
            program_.ShowBox("The simulation input file " + PathText(path) + " holds no samples.", box::exclamation);
        }
    } catch (const FileError& error) {
        program_.Log(error.what());
        TellFileProblem(path);
    }
}

void frmSimulator::TakeSamples(const DropSamples& read) {
    std::copy(read.volts.begin(), read.volts.end(), samples_.begin());
    sampleCount_ = static_cast<int>(read.volts.size());
    lowest_ = read.lowest;
    highest_ = read.highest;
}

void frmSimulator::TellFileProblem(const Path& path) {
    program_.ShowBox("Couldn't find simulation input file " + PathText(path) +
                         ".\r\nGo to setup screen to set simulation file path.",
                     box::exclamation);
}

void frmSimulator::DrawChart() {
    if (sampleCount_ == 0) {
        picChart.Clear();
        return;
    }
    const double margin = 0.1 * (static_cast<double>(highest_) - static_cast<double>(lowest_));
    PlotSeries volts{"Volts", {}, {}, false, {}};
    for (int i = 0; i < sampleCount_; ++i) {
        volts.x.push_back(static_cast<double>(i) / samplesPerSecond);
        volts.y.push_back(static_cast<double>(samples_[static_cast<std::size_t>(i)]));
    }
    picChart.Draw({"Simulated block",
                   {"Time (sec)", 0, 1, {}},
                   {"volts", static_cast<double>(lowest_) - margin, static_cast<double>(highest_) + margin, {}},
                   {std::move(volts)},
                   {}});
}

}  // namespace bellmark
