#include "relative/relative_analysis.h"

#include <algorithm>
#include <cmath>

#include "analysis/limits.h"
#include "platform/numbers.h"
#include "run/calibration_run.h"

namespace bellmark {

namespace {

double Squared(double value) {
    return value * value;
}

void AddSums(TwoWayAnalysis& result, std::span<const std::span<const double>> readings, int dropsPerSet) {
    std::vector<GroupSums> sets((readings.front().size()) / static_cast<std::size_t>(dropsPerSet));
    GroupSums all;
    for (const auto& sensor : readings) {
        GroupSums own;
        for (std::size_t drop = 0; drop < sensor.size(); ++drop) {
            own.Add(sensor[drop]);
            all.Add(sensor[drop]);
            const std::size_t set = drop / static_cast<std::size_t>(dropsPerSet);
            if (set < sets.size()) sets[set].Add(sensor[drop]);
        }
        result.sensors.push_back(own.Group());
    }
    for (const GroupSums& set : sets) result.sets.push_back(set.Group());
    result.all = all.Group();
}

}  // namespace

TwoWayAnalysis AnalyseTwoWay(std::span<const std::span<const double>> readings, int dropsPerSet) {
    TwoWayAnalysis result;
    if (readings.empty() || dropsPerSet < 1) return result;
    AddSums(result, readings, dropsPerSet);
    const double average = result.all.average;
    for (const auto& sensor : readings) {
        for (const double reading : sensor) result.SSTotal += Squared(reading - average);
    }
    const auto drops = static_cast<double>(readings.front().size());
    for (const ReadingGroup& sensor : result.sensors) result.SSSensor += drops * Squared(sensor.average - average);
    const double inSet = static_cast<double>(readings.size()) * dropsPerSet;
    for (const ReadingGroup& set : result.sets) result.SSSet += inSet * Squared(set.average - average);
    return result;
}

VarianceTable RelativeTrialTable(const RelativeTrialSummary& trial, int sensors, const AnalysisWarning& warn) {
    const int totalDegrees = relativeDrops * sensors - 1;
    return CompareSources({{"Set", trial.SSSet, relativeSets - 1}, {"Sensor", trial.SSSensor, sensors - 1}},
                          {"Total", trial.SSTotal, totalDegrees}, ProbabilityDegrees::OfTotal, warn);
}

StandardErrorInUnits InBothUnits(double standardError, bool englishUnits) {
    constexpr double micronsPerMil = 25.4;
    StandardErrorInUnits both{englishUnits ? standardError : standardError / micronsPerMil,
                              englishUnits ? standardError * micronsPerMil : standardError};
    both.isTooLarge = ExceedsLimit(both.microns, largestRelativeStdError);
    return both;
}

void DoRelativeDataAnalysis(CalibrationRun& run) {
    const auto trial = static_cast<std::size_t>(run.RelTrials);
    std::vector<std::span<const double>> readings;
    for (std::size_t s = 0; s < SensorCount(run); ++s) {
        readings.push_back(std::span<const double>(run.Sensor[s].RelTrial.at(trial).DropData).first(relativeDrops));
    }
    const TwoWayAnalysis found = AnalyseTwoWay(readings, relativeDropsPerSet);
    RelativeTrialSummary& summary = run.RelTrial.at(trial);
    summary = {};
    summary.Avg = found.all.average;
    summary.StdDev = found.all.stdDev;
    const double sensors = static_cast<double>(found.sensors.size());
    if (sensors > 0) summary.ChiSq = Squared(summary.Avg) * relativeDrops * sensors / Squared(sensors);
    summary.SSSet = found.SSSet;
    summary.SSSensor = found.SSSensor;
    summary.SSTotal = found.SSTotal;
    for (std::size_t set = 0; set < found.sets.size(); ++set) {
        summary.SetAvg[set] = found.sets[set].average;
        summary.SetStdDev[set] = found.sets[set].stdDev;
    }
    for (std::size_t s = 0; s < found.sensors.size(); ++s) {
        RelativeTrialRecord& record = run.Sensor[s].RelTrial[trial];
        record.Average = found.sensors[s].average;
        record.StdDev = found.sensors[s].stdDev;
        record.AdjFactor = record.Average > 0 ? summary.Avg / record.Average : 0;
        record.Gain = run.Sensor[s].InterimGain * record.AdjFactor;
    }
}

void SetFinalGains(CalibrationRun& run) {
    const auto trials = static_cast<std::size_t>(std::clamp(run.RelTrials, 0, static_cast<int>(maxTrials)));
    for (std::size_t s = 0; s < SensorCount(run); ++s) {
        double sum = 0;
        for (std::size_t t = 0; t < trials; ++t) sum += run.Sensor[s].RelTrial[t].Gain;
        run.Sensor[s].FinalGain = trials > 0 ? sum / static_cast<double>(trials) : 0;
    }
}

// ---- all accepted trials together

namespace {

double Mean(std::span<const double> values) {
    double sum = 0;
    for (const double value : values) sum += value;
    return values.empty() ? 0 : sum / static_cast<double>(values.size());
}

double ReadingsAbout(double average, std::span<const ScaledSensor> sensors) {
    double sum = 0;
    for (const ScaledSensor& sensor : sensors) {
        for (const PlacedReadings& trial : sensor.trials) {
            for (const double reading : trial.readings) sum += Squared(Round(reading * sensor.scale, 2) - average);
        }
    }
    return sum;
}

double SensorsAbout(double average, std::span<const ScaledSensor> sensors, double trials) {
    double sum = 0;
    for (const ScaledSensor& sensor : sensors) {
        double ofSensor = 0;
        for (const PlacedReadings& trial : sensor.trials) ofSensor += trial.average * sensor.scale;
        sum += Squared(ofSensor / trials - average) * relativeDrops * trials;
    }
    return sum;
}

double PositionsAbout(double average, std::span<const ScaledSensor> sensors) {
    constexpr int lastPosition = 10;
    constexpr double timesEach = 4;
    double sum = 0;
    for (int position = 1; position <= lastPosition; ++position) {
        GroupSums inPosition;
        for (const ScaledSensor& sensor : sensors) {
            for (const PlacedReadings& trial : sensor.trials) {
                if (trial.position == position) inPosition.Add(trial.average * sensor.scale);
            }
        }
        if (inPosition.count == 0) continue;
        sum += Squared(inPosition.Group().average - average) * timesEach * inPosition.count;
    }
    return sum;
}

/// Without an error term any difference between the sensors counts as systematic.
void JudgeSensors(FinalRelativeAnalysis& result, const AnalysisWarning& warn) {
    if (result.sensorDegrees > 0 && result.errorDegrees > 0 && !IsRounding(result.SSError, result.SSTotal)) {
        result.F = (result.SSSensors / result.sensorDegrees) / (result.SSError / result.errorDegrees);
        result.P = FProbability(result.sensorDegrees, result.errorDegrees, *result.F, warn);
    } else {
        const bool differ = result.sensorDegrees > 0 && !IsRounding(result.SSSensors, result.SSTotal);
        result.P = differ ? 0 : 1;
    }
    constexpr double significance = 0.05;
    result.verdict = ExceedsLimit(result.P, significance) ? "Sensors are randomly distributed"
                                                          : "At least one sensor is not randomly distibuted";
}

}  // namespace

FinalRelativeAnalysis AnalyseAllTrials(std::span<const ScaledSensor> sensors, std::span<const double> trialAverages,
                                       const AnalysisWarning& warn) {
    constexpr int setDegrees = relativeSets - 1;
    const auto sensorCount = static_cast<int>(sensors.size());
    const auto trialCount = static_cast<int>(trialAverages.size());
    FinalRelativeAnalysis result;
    result.average = Mean(trialAverages);
    result.SSTotal = ReadingsAbout(result.average, sensors);
    for (const double average : trialAverages) {
        result.SSTrials += Squared(result.average - average) * relativeDrops * sensorCount;
    }
    result.SSSensors = SensorsAbout(result.average, sensors, trialCount);
    result.SSPositions = PositionsAbout(result.average, sensors);
    result.SSError = result.SSTotal - result.SSTrials - result.SSSensors - result.SSPositions;
    result.sensorDegrees = sensorCount - 1;
    result.errorDegrees =
        relativeDrops * sensorCount * trialCount - 1 - (trialCount - 1) - 2 * (sensorCount - 1) - setDegrees;
    JudgeSensors(result, warn);
    return result;
}

std::optional<FinalRelativeAnalysis> AnalyseAllTrials(const CalibrationRun& run, const AnalysisWarning& warn) {
    const auto trials = static_cast<std::size_t>(std::clamp(run.RelTrials, 0, static_cast<int>(maxTrials)));
    if (trials < 2) return std::nullopt;
    std::vector<ScaledSensor> sensors;
    for (std::size_t s = 0; s < SensorCount(run); ++s) {
        const SensorCalRecord& record = run.Sensor[s];
        ScaledSensor sensor;
        if (record.InterimGain != 0) sensor.scale = record.FinalGain / record.InterimGain;
        for (std::size_t t = 0; t < trials; ++t) {
            const RelativeTrialRecord& trial = record.RelTrial[t];
            sensor.trials.push_back(
                {std::span<const double>(trial.DropData).first(relativeDrops), trial.Average, trial.Position});
        }
        sensors.push_back(std::move(sensor));
    }
    std::vector<double> averages;
    for (std::size_t t = 0; t < trials; ++t) averages.push_back(run.RelTrial[t].Avg);
    return AnalyseAllTrials(sensors, averages, warn);
}

}  // namespace bellmark
