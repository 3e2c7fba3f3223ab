#include "results/sensor_evaluation.h"

#include <cmath>

#include "analysis/limits.h"
#include "platform/numbers.h"
#include "results/load_cell_evaluation.h"
#include "run/calibration_run.h"

namespace bellmark {

namespace {

constexpr double largestChange = 0.01;

struct GainLimits {
    double smallest;
    double largest;
    const char* tooSmall;
    const char* tooLarge;
};
constexpr GainLimits usualLimits{0.98, 1.02, "     At least one sensor has a Final Gain < 0.98",
                                 "     At least one sensor has a Final Gain > 1.02"};
/// A Carl Bro expresses its gains on a scale of its own.
constexpr GainLimits carlBroLimits{10.1, 11.5, "     At least one sensor has a Final Gain < 10.1",
                                   "     At least one sensor has a Final Gain > 11.5"};

SensorCriteria CriteriaOf(const SensorCalRecord& sensor, const GainLimits& limits) {
    const auto change = GainChange(sensor.FinalGain, sensor.InitialGain);
    return {ExceedsLimit(sensor.FinalGain, limits.largest), ExceedsLimit(limits.smallest, sensor.FinalGain),
            !change || ExceedsLimit(std::abs(*change), largestChange)};
}

}  // namespace

SensorEvaluation EvaluateSensors(const CalibrationRun& run) {
    const GainLimits& limits = run.Manufacturer == Make::CarlBro ? carlBroLimits : usualLimits;
    SensorEvaluation result;
    for (int s = 0; s < run.NumberSensors; ++s) {
        const SensorCalRecord& sensor = run.Sensor.at(static_cast<std::size_t>(s));
        const SensorCriteria criteria = CriteriaOf(sensor, limits);
        if (criteria.isGainTooLarge) result.limits += std::string(limits.tooLarge) + "\r\n";
        if (criteria.isGainTooSmall) result.limits += std::string(limits.tooSmall) + "\r\n";
        if (criteria.isChangeTooLarge) result.limits += "At least one sensor has an Final Gain change > 1.0%\r\n";
        if (criteria.FailsGain() && criteria.isChangeTooLarge) {
            result.message += "Sensor " + NumberText(ShownSensorNumber(run, s)) + ":(" + sensor.SerialNumber +
                              ") failed Final Acceptance Criteria 1 and 2.\r\n";
        }
        result.sensors.push_back(criteria);
    }
    result.message += result.message.empty()
                          ? "\r\nFinal Acceptance Critera are met for all sensors."
                          : "\r\nOne of more sensors needs to have Criterion 3 (Historical trend) checked.";
    return result;
}

}  // namespace bellmark
