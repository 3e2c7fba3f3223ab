#pragma once

#include <array>
#include <cstddef>
#include <string>

#include "run/calibration_run.h"

/// Judgement of the deflection sensors by their reference trials (AASHTO R32). Trials come in pairs: each sensor is at
/// two positions of the stand. The judgement is advice; the operator decides. trials: how many of the run's trials
/// count, 0 to 4.
namespace bellmark {

/// Largest difference of the gains of a pair's two trials, on average over the pairs.
inline constexpr double largestPairDifference = 0.005;
/// Of the slope of reference on FWD peaks, that is of an adjustment factor.
inline constexpr double largestStdError = 0.002;
/// What still rounds to the limit passes.
bool IsStdErrorTooLarge(double stdErrAdjFactor);
/// From here on the gains of four trials count as scattered.
inline constexpr double largestSensorStdDev = 0.005;

inline bool IsPaired(int trials) {
    return trials > 0 && trials % 2 == 0;
}

/// Means over the sensors, one per trial; and over the trials, one per sensor. Values that need pairs stay 0 while a
/// pair is incomplete. Changes are fractions of the initial gain, 0 where that gain is 0.
struct ReferenceStatistics {
    std::array<double, maxTrials> AvgOldGain{};
    std::array<double, maxTrials> AvgAdjFactor{};
    std::array<double, maxTrials> AvgGain{};
    std::array<double, maxSensors> SensorMeanGain{};
    std::array<double, maxSensors> SensorChange{};
    std::array<double, maxSensors> TrialPairDifference{};  ///< second minus first, mean of the pairs
    std::array<double, maxSensors> SensorStdDev{};         ///< of a sensor's gains over the trials
    double AvgChange = 0;                                  ///< mean over the trials
    double SumPairDifference = 0;                          ///< over the sensors
    double RMSDifference = 0;                              ///< of the pair differences over the sensors
    bool isAnySensorScattered = false;                     ///< a standard deviation above 0.003
};
ReferenceStatistics CalcRefStats(const CalibrationRun& run, int trials);

/// Means of one trial, counted from 0, over the sensors, and the text on sensors whose standard error is too large.
/// With complete pairs also the interim gains (mean of each sensor's gains) and their means. Stores them in the run.
void RefCalcStats(CalibrationRun& run, int trial, int trials);

/// Judges whether the trials meet the criteria. Stores the result and its text in the run.
void RefCalGood(CalibrationRun& run, int trials);

/// Calculates every trial, the interim gains of the complete pairs, and the judgement, which is empty without trials.
/// Results of removed trials, and of gains without a pair, are cleared.
void JudgeReferenceTrials(CalibrationRun& run, int trials);

/// The text of the last judgement: overall first, then the trials with a remark.
std::string ReferenceMessages(const CalibrationRun& run);

/// A sensor's trials differ by more than the criteria allow.
bool ExceedsPairDifference(double difference);

}  // namespace bellmark
