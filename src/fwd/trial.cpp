#include "fwd/trial.h"

#include <algorithm>
#include <utility>

#include "analysis/limits.h"

namespace bellmark {

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
    return RegressThroughOrigin(trial.DropData, trial.RefDropData, run.TotalDrops);
}

OriginRegression CalibrateDevice(CalibrationRun& run, std::size_t device) {
    const OriginRegression fit = RegressionOf(run, device);
    TrialRecord& trial = TrialOf(run, device);
    trial.AdjFactor = fit.slope;
    trial.StdErrAdjFactor = fit.stdErrSlope;
    trial.Gain = fit.slope * InitialGainOf(run, device);
    return fit;
}

Color StdErrorColor(double stdErrSlope) {
    constexpr double largest = 0.002049;
    constexpr Color good{128, 255, 128};
    return ExceedsLimit(stdErrSlope, largest) ? colors::mustBeUpdated : good;
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
