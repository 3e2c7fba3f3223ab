#include "results/sensor_evaluation.h"

#include <cmath>

#include "analysis/limits.h"
#include "platform/numbers.h"
#include "results/load_cell_evaluation.h"
#include "run/calibration_run.h"

namespace bellmark {

namespace {

SensorCriteria CriteriaOf(const SensorCalRecord& sensor, const FinalGainLimits& limits) {
    const auto change = GainChange(sensor.FinalGain, sensor.InitialGain);
    return {ExceedsLimit(sensor.FinalGain, limits.greatest), ExceedsLimit(limits.smallest, sensor.FinalGain),
            !change || ExceedsLimit(std::abs(*change), limits.largestChange)};
}

}  // namespace

FinalGainLimits LimitsOfFinalGain(Make make) {
    constexpr double largestChange = 0.01;
    return make == Make::CarlBro ? FinalGainLimits{10.1, 11.5, largestChange}
                                 : FinalGainLimits{0.98, 1.02, largestChange};
}

SensorEvaluation EvaluateSensors(const CalibrationRun& run) {
    const FinalGainLimits limits = LimitsOfFinalGain(run.Manufacturer);
    SensorEvaluation result;
    for (int s = 0; s < run.NumberSensors; ++s) {
        const SensorCalRecord& sensor = run.Sensor.at(static_cast<std::size_t>(s));
        const SensorCriteria criteria = CriteriaOf(sensor, limits);
        if (criteria.isGainTooLarge)
            result.limits += "     At least one sensor has a Final Gain > " + NumberText(limits.greatest) + "\r\n";
        if (criteria.isGainTooSmall)
            result.limits += "     At least one sensor has a Final Gain < " + NumberText(limits.smallest) + "\r\n";
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
