#include "monthly/monthly_texts.h"

#include <algorithm>
#include <array>

#include "monthly/monthly_trial.h"
#include "platform/format.h"
#include "platform/numbers.h"

namespace bellmark {

namespace {

/// Where a text is told.
enum class Place { Anova, Advice, Monthly, Replacement, Report, Adjustment };

/// One text: told when it applies; one that joins goes on in the line before. "{}" stands for the sensor concerned.
struct FixedText {
    Place place;
    bool (*applies)(const MonthlyFacts&);
    const char* text;
    bool joins = false;
};

using Facts = MonthlyFacts;

bool Always(const Facts&) {
    return true;
}
bool IsFirstTrial(const Facts& f) {
    return f.trials == 1;
}
bool IsTooRough(const Facts& f) {
    return f.analysis.standardError.isTooLarge;
}
bool HasOutOfTolerance(const Facts& f) {
    return f.counts.OutOfTolerance > 0;
}
bool IsTrivial(const Facts& f) {
    return f.counts.OutOfTolerance == 0;
}
bool HasOutOf2Percent(const Facts& f) {
    return f.counts.OutOf2Percent > 0;
}
bool NeedsNoChange(const Facts& f) {
    return IsTrivial(f) && !HasOutOf2Percent(f);
}
bool TrialsDiffer(const Facts& f) {
    return f.counts.TrialDifferenceFailures > 0;
}
bool IsToBeReset(const Facts& f) {
    return f.counts.SensorsToReset > 0;
}
bool IsExceeded(const Facts& f) {
    return f.analysis.CochranExceeded;
}

bool ReplacedAgree(const Facts& f) {
    return ReplacedGainsAgree(f.run, f.trials, *f.replacedSensor);
}
bool TwoAreSpread(const Facts& f) {
    return f.replacedSensor && f.trials == 2 && !ReplacedAgree(f);
}
bool TwoAgree(const Facts& f) {
    return f.replacedSensor && f.trials == 2 && ReplacedAgree(f);
}
bool MoreAreSpread(const Facts& f) {
    return f.replacedSensor && f.trials > 2 && !ReplacedAgree(f);
}
bool MoreAgree(const Facts& f) {
    return f.replacedSensor && f.trials > 2 && ReplacedAgree(f);
}

constexpr const char* inputGain = "\u2022Input the new Relative Gain for Sensor {} in the FWD.";
constexpr const char* testOnceMore =
    "After adjusting the gain settings, one more relative calibration test is recommended to confirm that all sensors "
    "are within tolerance.";

// The texts are shown exactly as here, misspellings and missing blanks included: operators and handbooks know them this
// way.
constexpr std::array fixedTexts{
    // ---- beside the analysis of variance
    FixedText{Place::Anova, HasOutOfTolerance, "Gain adjustments are indicated. "},
    FixedText{Place::Anova, IsTrivial, "No gain adjustments are indicated. "},
    FixedText{Place::Anova, [](const Facts& f) { return f.analysis.SetIsSignificant; },
              "Drop set is statistically significant at the 5% level.  'Set' significance may be due to warming of the "
              "buffers or consolidation of pavement materials during the test. "},
    FixedText{Place::Anova, [](const Facts& f) { return f.analysis.SensorIsSignificant; },
              "Sensor number is statistically significant at the 5% level.  'Sensor number' significance may be due "
              "difference in the sensors or loose sensors in the stand during the trial. "},
    FixedText{Place::Anova, [](const Facts& f) { return f.analysis.PositionIsSignificant; },
              "Stand position is statistically significant at the 5% level.  'Position' significance may be due a "
              "loose stand or failure to hold the stand properly during the trial. Be sure to seat the geophones "
              "properly and hold the stand vertical with moderate downward pressure. "},
    FixedText{
        Place::Anova, Always,
        "Review the calibration plot for anomalies. If a repeat calibration appears to be needed, you may want to "
        "condition the FWD buffers with 50+ dropsfrom height 3 or 4 before performing a new trial.  If the "
        "deflections from the last 10 drops vary by more than 1 mil (25.4 microns), repeat the calibration at a "
        "new location."},
    FixedText{Place::Anova, IsExceeded, "\u2022 Results of Cochran Test on Significance of Variance Between Geophones"},
    FixedText{Place::Anova, IsExceeded, "The variance for Sensor No. {} is significantly larger than"},
    FixedText{Place::Anova, [](const Facts& f) { return IsExceeded(f) && !IsTooRough(f); },
              " the other sensors. This could be a result of a sensor issue, but is possibly just an artifact of the "
              "statistical test. Please review the calibration plot carefully for anomalies.",
              true},
    FixedText{Place::Anova, [](const Facts& f) { return IsExceeded(f) && IsTooRough(f); },
              " the other sensors. This could be a result of incorrect seating of the sensor in the stand OR an "
              "indication that this sensor is bad and needs to be replaced. Please review the calibration plot "
              "carefully or repeat the trial.",
              true},

    // ---- what to do next
    FixedText{Place::Advice, [](const Facts& f) { return !IsTooRough(f); },
              "\u2022 Standard error of the trial is less than or equal to 3 microns. This trial appears to be "
              "acceptable."},
    FixedText{Place::Advice, [](const Facts& f) { return !IsTooRough(f) && !f.plotWasShown; },
              " Review the calibration plot for outliers or anomalies.", true},
    FixedText{Place::Advice, IsTooRough,
              "\u2022 Standard error of this trial is more than 3 microns. This trial should be rejected. A review the "
              "calibration plot may help determine why the errors are too large."},
    FixedText{Place::Monthly, IsTrivial,
              "\u2022 All of the adjustment ratios are between 0.997 and 1.003 inclusive, they are not statistically "
              "significantly different from a ratio of 1.000. The calculated adjustments are trivial. "},
    FixedText{Place::Monthly, [](const Facts& f) { return NeedsNoChange(f) && !f.plotWasShown; }, "If there are", true},
    FixedText{Place::Monthly, [](const Facts& f) { return NeedsNoChange(f) && f.plotWasShown; }, "If there were", true},
    FixedText{Place::Monthly, NeedsNoChange,
              " no anomalies on the calibration plot, the calibration test is complete, and no change of the gain "
              "factors shall be made.",
              true},
    FixedText{Place::Monthly, HasOutOfTolerance,
              "\u2022 Warning: At least one sensor is outside the 0.3% tolerance limit."},
    FixedText{Place::Monthly,
              [](const Facts& f) { return HasOutOfTolerance(f) && !IsFirstTrial(f) && !TrialsDiffer(f); },
              "  Gain Factors for each sensor in both trials agree within 0.003."},
    FixedText{Place::Monthly, [](const Facts& f) { return HasOutOfTolerance(f) && IsFirstTrial(f); },
              "  Verify these results with another trial!"},
    FixedText{Place::Monthly, HasOutOf2Percent,
              "\u2022 Warning: At least one sensor is outside the 2% manufactuers recommended gain limit."},
    FixedText{Place::Monthly, HasOutOf2Percent, "  Notify Supervising Engineer after verifying with additional trial!"},
    FixedText{Place::Monthly, TrialsDiffer, "\u2022 Warning: The Difference in the Relative Trail Gains is too Large"},
    FixedText{Place::Monthly, TrialsDiffer,
              "For at least one sensor, the difference in the calculated gains for the two trials is greater than "
              "0.003. Reject this set of two trials and try performing a new set. If the second attempt also exceeds "
              "the allowable difference, the Annual Calibration procedure shall be performed as soon as possible."},
    FixedText{Place::Monthly, IsToBeReset, "\u2022 RESULTS INDICATE THAT ALL SENSOR GAINS SHOULD BE RESET."},
    FixedText{Place::Monthly, IsToBeReset, "\u2022Input ALL of Calculated Relative Gains in the FWD."},
    FixedText{Place::Monthly, IsToBeReset, testOnceMore},
    FixedText{Place::Replacement, TwoAreSpread,
              "\u2022The two trial Gain Factors for the replacement sensor are NOT within 0.003 of each other."},
    FixedText{Place::Replacement, TwoAreSpread, "\u2022If this trial is acceptable, perform additional trials."},
    FixedText{
        Place::Replacement, TwoAreSpread,
        "If the standard deviation for the trial Gain Factors for the replacement sensor is less than 0.003, then "
        "the trials are acceptable."},
    FixedText{Place::Replacement, TwoAgree,
              "\u2022The two trial Gain Factors for the replacement sensor agree within 0.003."},
    FixedText{Place::Replacement, TwoAgree, inputGain},
    FixedText{Place::Replacement, TwoAgree,
              "After inputting the new gain setting, one more relative calibration test is recommended to confirm that "
              "all sensors are within tolerance."},
    FixedText{Place::Replacement, MoreAreSpread,
              "\u2022The standard deviation for the trial Gain Factors for the replacement sensor is MORE than 0.003."},
    FixedText{Place::Replacement, MoreAreSpread,
              "\u2022An Annual FWD Calibration shall be performed as soon as possible."},
    FixedText{Place::Replacement, MoreAgree,
              "\u2022The standard deviation for the trial Gain Factors for the replacement sensor is less than 0.003."},
    FixedText{Place::Replacement, MoreAgree, inputGain},
    FixedText{Place::Replacement, MoreAgree, testOnceMore},

    // ---- in the report of a trial
    FixedText{Place::Report, HasOutOfTolerance, "* Warning: At least one sensor is outside the tolerance limit."},
    FixedText{Place::Report, [](const Facts& f) { return HasOutOfTolerance(f) && IsFirstTrial(f); },
              "  Verify these results with additional trial!"},
    FixedText{Place::Report, HasOutOf2Percent, "* Warning: At least one sensor is outside the 2% range limit."},
    FixedText{Place::Report, HasOutOf2Percent, "  Notify Supervising Engineer after verifying with additional trial!"},
    FixedText{Place::Report, IsToBeReset, ""},
    FixedText{Place::Report, IsToBeReset, "* RESULTS INDICATE THAT THE SENSOR GAINS SHOULD BE RESET."},
    FixedText{Place::Adjustment, HasOutOfTolerance, "   Analysis of Variance - Gain adjustments"},
    FixedText{Place::Adjustment, HasOutOfTolerance,
              "Results of this test indicate the possible need for gain adjustment.     "},
    FixedText{Place::Adjustment, [](const Facts& f) { return HasOutOfTolerance(f) && IsFirstTrial(f); },
              "This should be confirmed with a repeat test."},
    FixedText{Place::Adjustment, HasOutOfTolerance,
              "Gain adjustment should be performed when all New Gain Factors for two   "},
    FixedText{Place::Adjustment, HasOutOfTolerance, "independent calibrations are within +/- 0.003 of each other."},
    FixedText{Place::Adjustment, HasOutOfTolerance, "Gain adjustments should be made to ALL geophones."},
    FixedText{Place::Adjustment, HasOutOfTolerance,
              "After adjusting any gain setting, the relative calibration test should be"},
    FixedText{Place::Adjustment, HasOutOfTolerance, "repeated to confirm that all sensors are within tolerance."},
};

std::string SensorNumber(const Facts& facts, std::size_t sensor) {
    return NumberText(ShownSensorNumber(facts.run, static_cast<int>(sensor)));
}

/// The sensor of a text: the one with the largest variance by its number, the replaced one by its serial number.
std::string SensorNamed(const Facts& facts, Place place) {
    if (place == Place::Anova) return SensorNumber(facts, facts.analysis.cochran.sensor);
    return facts.replacedSensor ? facts.run.Sensor.at(*facts.replacedSensor).SerialNumber : std::string();
}

void AddTexts(const Facts& facts, Place place, std::vector<std::string>& lines) {
    for (const FixedText& fixed : fixedTexts) {
        if (fixed.place != place || !fixed.applies(facts)) continue;
        std::string text = fixed.text;
        if (const auto at = text.find("{}"); at != std::string::npos) text.replace(at, 2, SensorNamed(facts, place));
        if (fixed.joins) {
            lines.back() += text;
        } else {
            lines.push_back(text);
        }
    }
}

std::vector<std::string> TextsAt(const Facts& facts, std::initializer_list<Place> places) {
    std::vector<std::string> lines;
    for (const Place place : places) AddTexts(facts, place, lines);
    return lines;
}

/// "F 2.2693, in the table 2.5000 *"
std::string Compared(const char* what, double exact, double fixed) {
    constexpr const char* picture = "0.0000";
    return std::string(what) + ' ' + Format(exact, picture) + ", in the table " + Format(fixed, picture) +
           (DiffersFromExact(fixed, exact) ? " *" : "");
}

}  // namespace

std::vector<std::string> AnovaText(const MonthlyFacts& facts) {
    return TextsAt(facts, {Place::Anova});
}

std::vector<std::string> MonthlyAdvice(const MonthlyFacts& facts) {
    return TextsAt(facts, {Place::Advice, Place::Monthly});
}

std::vector<std::string> ReplaceAdvice(const MonthlyFacts& facts) {
    return TextsAt(facts, {Place::Advice, Place::Replacement});
}

std::vector<std::string> ReportWarnings(const MonthlyFacts& facts) {
    return TextsAt(facts, {Place::Report});
}

std::vector<std::string> AdjustmentText(const MonthlyFacts& facts) {
    return TextsAt(facts, {Place::Adjustment});
}

std::optional<std::string> ReplaceSensorCheck(const CalibrationRun& run, int trials,
                                              std::optional<std::size_t> replacedSensor) {
    if (!replacedSensor || static_cast<int>(*replacedSensor) >= run.NumberSensors) return {};
    const double gain = run.Sensor.at(*replacedSensor).RelTrial.at(static_cast<std::size_t>(trials - 1)).Gain;
    return "* Trial Relative Gain for REPLACED Sensor No." +
           NumberText(ShownSensorNumber(run, static_cast<int>(*replacedSensor))) + " is " + Format(gain, "0.000") +
           "\r\n is " + (IsOutOf2Percent(gain) ? "outside" : "within") + " the \u00B12% tolerance range.";
}

std::string FinalReplacementText(const CalibrationRun& run, std::size_t replacedSensor) {
    const SensorCalRecord& sensor = run.Sensor.at(replacedSensor);
    return "The Final Gain for the replacement sensor " + sensor.SerialNumber + " is " +
           Format(sensor.FinalGain, "0.000");
}

std::vector<std::string> ExactCriticalText(const CalibrationRun& run, const MonthlyAnalysis& analysis) {
    if (run.NumberSensors < 2) return {};
    const CriticalValues exact = ExactCriticalValues(run.NumberSensors, monthlyDropsPerSet);
    const CriticalValues& fixed = analysis.critical;
    std::vector<std::string> lines{
        "Exact critical values at the 5% level for " + NumberText(run.NumberSensors) + " sensors:",
        Compared("F", exact.F, fixed.F), Compared("Cochran's C", exact.CochranCritical, fixed.CochranCritical)};
    if (std::any_of(lines.begin(), lines.end(), [](const std::string& line) { return line.ends_with('*'); }))
        lines.push_back("* The table has another value. The table decides.");
    return lines;
}

}  // namespace bellmark
