#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "analysis/analysis.h"
#include "analysis/reading_group.h"
#include "analysis/variance_table.h"

/// The annual comparison of all deflection sensors, which stand together in the sensor stand and see the same drops
/// (AASHTO R32, relative calibration). These are pure calculations.
namespace bellmark {

struct CalibrationRun;
struct RelativeTrialSummary;

inline constexpr int relativeSets = 8;
inline constexpr int relativeDropsPerSet = 5;
inline constexpr int relativeDrops = relativeSets * relativeDropsPerSet;

/// Two-way analysis of variance of sensors and sets, without interaction. Sums of squares about the grand mean, in the
/// squared unit of the readings.
struct TwoWayAnalysis {
    std::vector<ReadingGroup> sensors;
    std::vector<ReadingGroup> sets;
    ReadingGroup all;
    double SSSet = 0;
    double SSSensor = 0;
    double SSTotal = 0;
};

/// readings: for each sensor the same number of drops in order. A set is dropsPerSet successive drops. Without readings
/// all results are 0. Checked against the survival times of Box and Cox (J. R. Stat. Soc. B 26, 1964).
TwoWayAnalysis AnalyseTwoWay(std::span<const std::span<const double>> readings, int dropsPerSet);

/// The analysis of a trial as a table: sets, sensors, error, total. The second degrees of freedom of both probabilities
/// are the total's.
VarianceTable RelativeTrialTable(const RelativeTrialSummary& trial, int sensors, const AnalysisWarning& warn);

inline constexpr double largestRelativeStdError = 3;  ///< microns (AASHTO R32)

/// The standard error of a trial in both units.
struct StandardErrorInUnits {
    double mils = 0;
    double microns = 0;
    bool isTooLarge = false;  ///< above largestRelativeStdError
};
StandardErrorInUnits InBothUnits(double standardError, bool englishUnits);

/// Analyses the trial in hand, which follows the accepted ones, and stores averages, deviations, ratios, gains and sums
/// in its records. A sensor without a deflection above 0 gets ratio and gain 0, which means unknown. The run must have
/// room for the trial.
void DoRelativeDataAnalysis(CalibrationRun& run);

/// Sets each sensor's final gain to the mean of its gains over the accepted trials.
void SetFinalGains(CalibrationRun& run);

// ---- all accepted trials together

/// Readings of one sensor in one trial.
struct PlacedReadings {
    std::span<const double> readings;  ///< relativeDrops of them
    double average = 0;                ///< of the readings
    int position = 0;                  ///< in the stand, from 1; 0 when it is not known
};

/// A sensor in all trials. Its readings include the interim gain; scaled, the final gain.
struct ScaledSensor {
    double scale = 0;  ///< final over interim gain; 0 without an interim gain
    std::vector<PlacedReadings> trials;
};

/// Sums of squares in the squared unit of the readings.
struct FinalRelativeAnalysis {
    double average = 0;  ///< of the trials' averages
    double SSTotal = 0;
    double SSTrials = 0;
    double SSSensors = 0;
    double SSPositions = 0;
    double SSError = 0;
    int sensorDegrees = 0;
    int errorDegrees = 0;
    std::optional<double> F;  ///< of the sensors; none when the error is rounding alone
    double P = 1;             ///< that such an F comes by chance, 0 to 1
    const char* verdict = "";
};

/// Tests whether the scaled sensors differ by chance alone. The final gains are chosen so that the averages agree, so
/// the answer is nearly always yes. trialAverages: of each trial over all sensors, as stored.
///
/// The procedure defines that the positions' sum counts each position four times, not forty times, and that scaled
/// readings are rounded to two decimals, in mils as in microns.
FinalRelativeAnalysis AnalyseAllTrials(std::span<const ScaledSensor> sensors, std::span<const double> trialAverages,
                                       const AnalysisWarning& warn);

/// The same for the run's accepted trials; nothing for fewer than two.
std::optional<FinalRelativeAnalysis> AnalyseAllTrials(const CalibrationRun& run, const AnalysisWarning& warn);

}  // namespace bellmark
