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
/// (AASHTO R32, relative calibration). Everything here is numbers in, numbers out.
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

/// readings: of each sensor its drops in their order, as many for each; a set is dropsPerSet drops in a row. Without
/// readings everything is 0. Checked against the survival times of Box and Cox (J. R. Stat. Soc. B 26, 1964).
TwoWayAnalysis AnalyseTwoWay(std::span<const std::span<const double>> readings, int dropsPerSet);

/// The analysis of a trial as a table: sets, sensors, error, total. The second degrees of freedom of both probabilities
/// are the total's.
VarianceTable RelativeTrialTable(const RelativeTrialSummary& trial, int sensors, const AnalysisWarning& warn);

inline constexpr double largestRelativeStdError = 3;  ///< microns (AASHTO R32)

/// The standard error of a trial as both units have it.
struct StandardErrorInUnits {
    double mils = 0;
    double microns = 0;
    bool isTooLarge = false;  ///< above largestRelativeStdError
};
StandardErrorInUnits InBothUnits(double standardError, bool englishUnits);

/// Analyses the trial in hand, the one behind the accepted ones, and stores averages, deviations, ratios, gains and
/// sums with it. A sensor with no deflection above 0 gets ratio and gain 0: nothing can be said of it. The run must
/// have room for the trial.
void DoRelativeDataAnalysis(CalibrationRun& run);

/// Gives each sensor the mean of its gains over the accepted trials as final gain.
void SetFinalGains(CalibrationRun& run);

// ---- all accepted trials together

/// Readings of one sensor in one trial.
struct PlacedReadings {
    std::span<const double> readings;  ///< relativeDrops of them
    double average = 0;                ///< of the readings
    int position = 0;                  ///< in the stand, from 1; 0 when it is not known
};

/// A sensor in all trials. Its readings carry the interim gain; scaled they carry the final one.
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

/// Are the sensors, once scaled to agree, spread by chance alone? Since the final gains are made so that the averages
/// agree, the answer is nearly always yes. trialAverages: of each trial over all sensors, as stored.
///
/// The sum of the positions counts each four times, not forty times, and scaled readings are rounded to two decimals:
/// so the procedure has it, in mils and in microns.
FinalRelativeAnalysis AnalyseAllTrials(std::span<const ScaledSensor> sensors, std::span<const double> trialAverages,
                                       const AnalysisWarning& warn);

/// The same of the run's accepted trials; nothing below two of them.
std::optional<FinalRelativeAnalysis> AnalyseAllTrials(const CalibrationRun& run, const AnalysisWarning& warn);

}  // namespace bellmark
