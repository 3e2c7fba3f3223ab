#include "run/trial.h"

#include <algorithm>
#include <utility>

#include "analysis/limits.h"
#include "platform/numbers.h"

namespace bellmark {

namespace {

std::span<const double> PeaksOf(const std::array<double, maxDrops>& peaks, int count) {
    return std::span(peaks).first(static_cast<std::size_t>(std::clamp(count, 0, static_cast<int>(maxDrops))));
}

std::array<TrialShape, maxTrials>& ShapesOf(CalibrationRun& run) {
    return CalibratesSensors(run) ? run.RefTrialShape : run.LCTrialShape;
}

}  // namespace

// ---- drops

DropPlace PlaceOf(const TrialShape& shape, int index) {
    const int perHeight = std::max(shape.dropsPerHeight, 1);
    return {index / perHeight + 1, index % perHeight + 1};
}

std::string DropFilePrefix(Procedure procedure, int number) {
    const char* instrument = procedure == Procedure::LoadCell ? "LoadCell" : "Reference";
    return instrument + NumberText(number) + "-H";
}

std::string DropFileName(Procedure procedure, int number, const DropPlace& place) {
    return DropFilePrefix(procedure, number) + NumberText(place.height) + 'D' + NumberText(place.drop) + ".txt";
}

int DropShown(const TrialInHand& trial) {
    return trial.reviewed ? trial.reviewed->index : trial.DropSequenceIndex;
}

int NumberOfTrialShown(const CalibrationRun& run) {
    return run.Trial.TrialReview() ? TrialCount(run) : TrialCount(run) + 1;
}

// ---- the trial in hand

TrialInHand TrialOfSetup(const CalibrationRun& run) {
    TrialInHand trial;
    trial.procedure = run.CurrentProcedure;
    trial.number = TrialCount(run) + 1;
    trial.shape = {run.NumberLoadLevels, run.NumberDropsPerLoadLevel, run.EnglishUnits};
    return trial;
}

bool IsTrialInHand(const CalibrationRun& run) {
    const TrialInHand& trial = run.Trial;
    const TrialInHand wanted = TrialOfSetup(run);
    return trial.DropSequenceIndex > 0 && trial.procedure == wanted.procedure && trial.number == wanted.number &&
           trial.shape == wanted.shape;
}

void BeginTrial(CalibrationRun& run) {
    run.Trial = TrialOfSetup(run);
}

void TakePeak(TrialInHand& trial, double peak, const DropMarks& marks) {
    if (IsComplete(trial) || trial.DropSequenceIndex >= static_cast<int>(maxDrops)) return;
    const auto slot = static_cast<std::size_t>(trial.DropSequenceIndex);
    trial.DropResults[slot] = peak;
    trial.DropNoiseFlags[slot] = marks.excessNoise;
    trial.DropRangeFlags[slot] = marks.outOfRange;
    ++trial.DropSequenceIndex;
}

void BeginReview(TrialInHand& trial, int index, bool isCounted) {
    trial.reviewed = DropReview{index, isCounted};
}

void EndReview(TrialInHand& trial) {
    trial.reviewed.reset();
}

void CountTrial(CalibrationRun& run) {
    ++TrialCount(run);
    ShapesOf(run).at(static_cast<std::size_t>(TrialCount(run) - 1)) = run.Trial.shape;
    for (std::size_t device = 0; device < DevicesInTrial(run); ++device) {
        TrialRecord& record = TrialOf(run, device);
        record = {};
        record.RefDropData = run.Trial.DropResults;
    }
}

void TakeUpCountedTrial(CalibrationRun& run) {
    TrialInHand trial;
    trial.procedure = run.CurrentProcedure;
    trial.number = TrialCount(run);
    trial.shape = ShapesOf(run).at(static_cast<std::size_t>(trial.number - 1));
    trial.DropSequenceIndex = trial.shape.Drops();
    trial.DropResults = TrialOf(run, 0).RefDropData;
    trial.DropNoiseFlags = run.Trial.DropNoiseFlags;
    trial.DropRangeFlags = run.Trial.DropRangeFlags;
    run.Trial = trial;
    --TrialCount(run);
}

void DropCountedTrial(CalibrationRun& run) {
    if (TrialCount(run) <= 0) return;
    for (std::size_t device = 0; device < DevicesInTrial(run); ++device) TrialOf(run, device) = {};
    --TrialCount(run);
}

void LeaveTrial(CalibrationRun& run) {
    run.FlagUnacceptedTrial = false;
    run.Trial.DropSequenceIndex = 0;
    run.Trial.wasInterrupted = false;
    run.Trial.DropNoiseFlags = {};
    run.Trial.DropRangeFlags = {};
}

// ---- what was counted

bool HasSensorTrials(const CalibrationRun& run) {
    return run.RefTrials > 0 || run.RelTrials > 0 || run.RelTrialInHand.has_value();
}

bool HasLoadCellTrials(const CalibrationRun& run) {
    return run.LoadCellRefTrials > 0;
}

int TrialWithSamePeaks(const CalibrationRun& run) {
    const int last = TrialCount(run) - 1;
    for (int t = 0; t < last; ++t) {
        bool same = DevicesInTrial(run) > 0;
        for (std::size_t device = 0; same && device < DevicesInTrial(run); ++device) {
            const auto& trials = CalibratesSensors(run) ? run.Sensor.at(device).RefTrial : run.LCTrial;
            same =
                trials.at(static_cast<std::size_t>(t)).DropData == trials.at(static_cast<std::size_t>(last)).DropData;
        }
        if (same) return t + 1;
    }
    return 0;
}

int& TrialCount(CalibrationRun& run) {
    return CalibratesSensors(run) ? run.RefTrials : run.LoadCellRefTrials;
}

int TrialCount(const CalibrationRun& run) {
    return CalibratesSensors(run) ? run.RefTrials : run.LoadCellRefTrials;
}

std::size_t DevicesInTrial(const CalibrationRun& run) {
    return CalibratesSensors(run) ? static_cast<std::size_t>(run.NumberSensors) : 1;
}

const TrialRecord& TrialOf(const CalibrationRun& run, std::size_t device) {
    const auto trial = static_cast<std::size_t>(TrialCount(run) - 1);
    return CalibratesSensors(run) ? run.Sensor.at(device).RefTrial.at(trial) : run.LCTrial.at(trial);
}

TrialRecord& TrialOf(CalibrationRun& run, std::size_t device) {
    return const_cast<TrialRecord&>(TrialOf(std::as_const(run), device));
}

const std::string& SerialNumberOf(const CalibrationRun& run, std::size_t device) {
    return CalibratesSensors(run) ? run.Sensor.at(device).SerialNumber : run.LoadCellSerialNumber;
}

double InitialGainOf(const CalibrationRun& run, std::size_t device) {
    return CalibratesSensors(run) ? run.Sensor.at(device).InitialGain : run.LoadCellInitialGain;
}

std::size_t NeighbourSensor(const CalibrationRun& run, std::size_t sensor, int step) {
    const int sensors = std::max(run.NumberSensors, 1);
    return static_cast<std::size_t>((static_cast<int>(sensor) + step + sensors) % sensors);
}

OriginRegression RegressionOf(const CalibrationRun& run, std::size_t device) {
    const TrialRecord& trial = TrialOf(run, device);
    return RegressThroughOrigin(trial.DropData, trial.RefDropData, run.Trial.shape.Drops());
}

OriginRegression CalibrateDevice(CalibrationRun& run, std::size_t device) {
    const OriginRegression fit = RegressionOf(run, device);
    TrialRecord& trial = TrialOf(run, device);
    trial.AdjFactor = fit.slope;
    trial.StdErrAdjFactor = fit.stdErrSlope;
    trial.Gain = fit.slope * InitialGainOf(run, device);
    return fit;
}

// ---- statistics of the heights

std::vector<PeakStatistics> StatisticsOfHeights(const TrialShape& shape, std::span<const double> peaks) {
    std::vector<PeakStatistics> heights;
    const auto perHeight = static_cast<std::size_t>(std::max(shape.dropsPerHeight, 1));
    for (int height = 0; height < shape.heights && !peaks.empty(); ++height) {
        const auto values = peaks.first(std::min(perHeight, peaks.size()));
        double sum = 0;
        double sumOfSquares = 0;
        for (const double value : values) {
            sum += value;
            sumOfSquares += value * value;
        }
        const int count = static_cast<int>(values.size());
        heights.push_back({sum / count, StdDev(sum, sumOfSquares, count)});
        peaks = peaks.subspan(values.size());
    }
    return heights;
}

std::array<HeightStatistics, maxHeights> HeightStats(const CalibrationRun& run, std::size_t device) {
    std::array<HeightStatistics, maxHeights> stats{};
    const TrialShape& shape = run.Trial.shape;
    const TrialRecord& trial = TrialOf(run, device);
    const auto reference = StatisticsOfHeights(shape, PeaksOf(trial.RefDropData, shape.Drops()));
    const auto fwd = StatisticsOfHeights(shape, PeaksOf(trial.DropData, shape.Drops()));
    for (std::size_t height = 0; height < std::min(stats.size(), reference.size()); ++height) {
        stats[height] = {reference[height].mean, reference[height].stdDev, fwd[height].mean, fwd[height].stdDev};
    }
    return stats;
}

double HeightVariationLimit(Procedure procedure, bool englishUnits, double mean) {
    if (procedure == Procedure::Sensors) return 0.01 * mean + (englishUnits ? 0.08 : 2);
    return 0.02 * mean + (englishUnits ? 45 : 0.2);
}

bool ScatterDiffers(const HeightStatistics& height, bool sensors, bool englishUnits) {
    constexpr double smallest = 0.01;
    const double reference = height.RefStdDev;
    const double fwd = height.FWDStdDev;
    if (!ExceedsLimit(reference, smallest) || !ExceedsLimit(fwd, smallest)) return false;
    const double ratio = reference / fwd;
    if (!ExceedsLimit(ratio, 3) && !ExceedsLimit(0.3333, ratio)) return false;
    if (sensors) {
        const double floor = englishUnits ? 0.1 : 2.5;
        return ExceedsLimit(reference, floor) && ExceedsLimit(fwd, floor);
    }
    const double floor = englishUnits ? 25 : 0.111205;
    const bool bothBelow = ExceedsLimit(floor, reference) && ExceedsLimit(floor, fwd);
    return !bothBelow;
}

}  // namespace bellmark
