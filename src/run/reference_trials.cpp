#include "run/reference_trials.h"

#include <algorithm>
#include <cmath>

#include "analysis/analysis.h"
#include "analysis/limits.h"
#include "platform/format.h"
#include "platform/numbers.h"

namespace bellmark {

namespace {

constexpr double scatteredStdDev = 0.003;

std::size_t TrialsThatCount(int trials) {
    return static_cast<std::size_t>(std::clamp(trials, 0, static_cast<int>(maxTrials)));
}

double ChangeOf(double gain, double initialGain) {
    return initialGain == 0 ? 0 : (gain - initialGain) / initialGain;
}

/// Mean, deviation and change of one gain of every sensor.
template <class Gain>
ReferenceTrialSummary SummaryOver(const CalibrationRun& run, Gain gain) {
    const std::size_t sensors = SensorCount(run);
    if (sensors == 0) return {};
    double sum = 0;
    double sumOfSquares = 0;
    double initial = 0;
    for (std::size_t s = 0; s < sensors; ++s) {
        const double value = gain(run.Sensor[s]);
        sum += value;
        sumOfSquares += value * value;
        initial += run.Sensor[s].InitialGain;
    }
    const auto count = static_cast<double>(sensors);
    const double mean = sum / count;
    return {mean, StdDev(sum, sumOfSquares, static_cast<int>(sensors)), ChangeOf(mean, initial / count)};
}

double MeanGain(const SensorCalRecord& sensor, std::size_t trials) {
    double sum = 0;
    for (std::size_t t = 0; t < trials; ++t) sum += sensor.RefTrial[t].Gain;
    return sum / static_cast<double>(trials);
}

double PairDifference(const SensorCalRecord& sensor, std::size_t trials) {
    const std::size_t pairs = trials / 2;
    double sum = 0;
    for (std::size_t t = 0; t + 1 < trials; t += 2) sum += sensor.RefTrial[t + 1].Gain - sensor.RefTrial[t].Gain;
    return sum / static_cast<double>(pairs);
}

void AddSensor(ReferenceStatistics& stats, const SensorCalRecord& sensor, std::size_t s, std::size_t trials) {
    double sum = 0;
    double sumOfSquares = 0;
    for (std::size_t t = 0; t < trials; ++t) {
        const double gain = sensor.RefTrial[t].Gain;
        stats.AvgOldGain[t] += sensor.InitialGain;
        stats.AvgAdjFactor[t] += sensor.RefTrial[t].AdjFactor;
        stats.AvgGain[t] += gain;
        sum += gain;
        sumOfSquares += gain * gain;
    }
    if (!IsPaired(static_cast<int>(trials))) return;
    stats.SensorStdDev[s] = StdDev(sum, sumOfSquares, static_cast<int>(trials));
    if (ExceedsLimit(stats.SensorStdDev[s], scatteredStdDev)) stats.isAnySensorScattered = true;
    stats.SensorMeanGain[s] = sum / static_cast<double>(trials);
    stats.SensorChange[s] = ChangeOf(stats.SensorMeanGain[s], sensor.InitialGain);
    stats.TrialPairDifference[s] = PairDifference(sensor, trials);
    stats.SumPairDifference += stats.TrialPairDifference[s];
    stats.RMSDifference += stats.TrialPairDifference[s] * stats.TrialPairDifference[s];
}

/// The sensors of a trial whose slopes have too large a standard error; empty when there are none.
std::string StdErrorNote(const CalibrationRun& run, std::size_t trial) {
    std::string listing;
    int count = 0;
    for (std::size_t s = 0; s < SensorCount(run); ++s) {
        const double error = run.Sensor[s].RefTrial[trial].StdErrAdjFactor;
        if (!IsStdErrorTooLarge(error)) continue;
        listing += "            Sensor " + run.Sensor[s].SerialNumber + ": SE = " + Format(error, "0.0000") + "\r\n";
        ++count;
    }
    if (count == 0) return {};
    return "     Reference Trial " + NumberText(trial + 1) + "\r\n\r\n" +
           (count == 1 ? "          Sensor with a Standard Error of Slope > 0.002."
                       : "          Sensors with a Standard Error of Slope > 0.002.") +
           "\r\n" + listing;
}

/// A sensor that a trial gave no gain cannot be judged; empty when there is none.
std::string SensorsWithoutGain(const CalibrationRun& run, int trials) {
    std::string text;
    for (std::size_t s = 0; s < SensorCount(run); ++s) {
        for (std::size_t t = 0; t < TrialsThatCount(trials); ++t) {
            if (run.Sensor[s].RefTrial[t].Gain != 0) continue;
            text += (text.empty() ? "" : "\r\n") + std::string("Sensor ") + run.Sensor[s].SerialNumber +
                    " has no gain in trial " + NumberText(t + 1) + '.';
        }
    }
    return text;
}

void SetInterimGains(CalibrationRun& run, std::size_t trials) {
    for (std::size_t s = 0; s < SensorCount(run); ++s) run.Sensor[s].InterimGain = MeanGain(run.Sensor[s], trials);
    const auto summary = SummaryOver(run, [](const SensorCalRecord& sensor) { return sensor.InterimGain; });
    run.RefCalAvg = summary.Avg;
    run.RefCalStdDev = summary.StdDev;
    run.RefCalChange = summary.Change;
}

void ForgetInterimGains(CalibrationRun& run) {
    for (SensorCalRecord& sensor : run.Sensor) sensor.InterimGain = 0;
    run.RefCalAvg = 0;
    run.RefCalStdDev = 0;
    run.RefCalChange = 0;
}

}  // namespace

bool IsStdErrorTooLarge(double stdErrAdjFactor) {
    constexpr double roundedToLimit = 0.000049;
    return ExceedsLimit(stdErrAdjFactor, largestStdError + roundedToLimit);
}

bool ExceedsPairDifference(double difference) {
    return ExceedsLimit(std::abs(difference), largestPairDifference);
}

ReferenceStatistics CalcRefStats(const CalibrationRun& run, int trials) {
    ReferenceStatistics stats;
    const std::size_t sensors = SensorCount(run);
    const std::size_t counted = TrialsThatCount(trials);
    if (sensors == 0 || counted == 0) return stats;
    for (std::size_t s = 0; s < sensors; ++s) AddSensor(stats, run.Sensor[s], s, counted);
    for (std::size_t t = 0; t < counted; ++t) {
        for (auto* average : {&stats.AvgOldGain, &stats.AvgAdjFactor, &stats.AvgGain}) {
            (*average)[t] /= static_cast<double>(sensors);
        }
        stats.AvgChange += ChangeOf(stats.AvgGain[t], stats.AvgOldGain[t]);
    }
    stats.AvgChange /= static_cast<double>(counted);
    stats.RMSDifference = std::sqrt(stats.RMSDifference / static_cast<double>(sensors));
    return stats;
}

void RefCalcStats(CalibrationRun& run, int trial, int trials) {
    const auto t = static_cast<std::size_t>(trial);
    run.RefTrial.at(t) = SummaryOver(run, [t](const SensorCalRecord& sensor) { return sensor.RefTrial[t].Gain; });
    run.SensorRefMessage.at(t + 1) = StdErrorNote(run, t);
    if (IsPaired(trials)) SetInterimGains(run, TrialsThatCount(trials));
}

void RefCalGood(CalibrationRun& run, int trials) {
    run.SensorRefCalGood = false;
    std::string& text = run.SensorRefMessage[0];
    if (trials < 2) {
        text = "At least 2 reference calibrations must be done.";
        return;
    }
    if (!IsPaired(trials)) {
        text = "Missing calibration; a calibration must be done for each stand position.";
        return;
    }
    text = run.SensorRefCalComplete ? "Reference Calibrations Accepted.\r\n" : "";
    const ReferenceStatistics stats = CalcRefStats(run, trials);
    const std::string withoutGain = SensorsWithoutGain(run, trials);
    if (!withoutGain.empty()) {
        text += withoutGain;
        return;
    }
    run.SensorRefCalGood =
        std::none_of(stats.TrialPairDifference.begin(), stats.TrialPairDifference.end(), ExceedsPairDifference);
    text += run.SensorRefCalGood
                ? "Reference Trial Acceptance Criteria Met."
                : "One or more sensors has a difference in the reference gain factor between the two trials of more "
                  "than 0.005.\r\nPlease perform two more reference calibrations.";
}

void JudgeReferenceTrials(CalibrationRun& run, int trials) {
    const std::size_t counted = TrialsThatCount(trials);
    run.RefTrial = {};
    run.SensorRefMessage = {};
    ForgetInterimGains(run);
    run.SensorRefCalGood = false;
    if (counted == 0) return;
    // An incomplete pair leaves the gains of the pairs before it.
    const int paired = static_cast<int>(counted - counted % 2);
    for (std::size_t t = 0; t < counted; ++t) RefCalcStats(run, static_cast<int>(t), paired);
    RefCalGood(run, static_cast<int>(counted));
}

std::string ReferenceMessages(const CalibrationRun& run) {
    std::string text;
    for (const std::string& message : run.SensorRefMessage) {
        if (message.empty()) continue;
        if (!text.empty()) text += "\r\n\r\n";
        text += message;
    }
    return text;
}

}  // namespace bellmark
