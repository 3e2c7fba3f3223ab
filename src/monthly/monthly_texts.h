#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

/// What the operator is told of a monthly trial, in fixed words: one table of texts, each with its condition.
namespace bellmark {

struct CalibrationRun;
struct MonthlyAnalysis;
struct MonthlyCounts;

/// All that the conditions of the texts ask.
struct MonthlyFacts {
    const CalibrationRun& run;
    const MonthlyAnalysis& analysis;
    const MonthlyCounts& counts;
    int trials = 1;                             ///< with the one shown, see monthly_trial.h
    bool plotWasShown = false;                  ///< of this trial
    std::optional<std::size_t> replacedSensor;  ///< index; of a replacement
};

/// The text beside the analysis of variance, a line each, Cochran's paragraph included.
std::vector<std::string> AnovaText(const MonthlyFacts& facts);

/// What to do next, a line each, 16 at most: in a monthly calibration and in a replacement.
std::vector<std::string> MonthlyAdvice(const MonthlyFacts& facts);
std::vector<std::string> ReplaceAdvice(const MonthlyFacts& facts);

/// Of the report of a trial: the warnings below the gains, and the block on gain adjustments where they are indicated.
std::vector<std::string> ReportWarnings(const MonthlyFacts& facts);
std::vector<std::string> AdjustmentText(const MonthlyFacts& facts);

/// The gain that the trial shown gives the replaced sensor, in two lines: element 1 of message 172, and a note in the
/// report. Nothing without such a sensor.
std::optional<std::string> ReplaceSensorCheck(const CalibrationRun& run, int trials,
                                              std::optional<std::size_t> replacedSensor);

/// "The Final Gain for the replacement sensor D3 is 1.012": element 1 of message 173, and the end of the final report.
std::string FinalReplacementText(const CalibrationRun& run, std::size_t replacedSensor);

/// As advice on the frame of the analysis: the exact critical values beside the fixed ones, a line each; those that
/// differ end in an asterisk, and the last line says what that means.
std::vector<std::string> ExactCriticalText(const CalibrationRun& run, const MonthlyAnalysis& analysis);

}  // namespace bellmark
