#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "monthly/cochran.h"
#include "monthly/critical_values.h"
#include "monthly/latin_square.h"
#include "relative/relative_analysis.h"
#include "run/calibration_run.h"

/// A trial of a monthly calibration or of a sensor's replacement: the drops of the FWD's file, their analysis, what is
/// counted, and what comes next. Until it is accepted its readings stand behind those of the accepted trials, at index
/// RelTrials, as in the annual comparison; CountRelativeTrial accepts it.
///
/// trials: how many there are with the one that is shown, which is the last of them: RelTrials + 1 before it is
/// accepted, RelTrials after.
namespace bellmark {

class PDDXFile;

inline constexpr int monthlyDropsPerSet = 5;

/// Why the drops of a file were not taken. The run then keeps what it had, and another file can be read.
enum class MonthlyProblem {
    None,
    NoSensors,         ///< message 250
    WrongDropCount,    ///< message 251; the run has the two numbers that it shows
    TooManySensors,    ///< more than maxSensors
    OtherSensorCount,  ///< not that of the trials before
    NoRoom,            ///< as many trials as fit are accepted
};

/// What a file told beside the deflections, which go into the run.
struct MonthlyReading {
    MonthlyProblem problem = MonthlyProblem::None;
    int sensors = 0;            ///< in the file
    int dropsInFile = 0;        ///< of the test location
    std::vector<double> loads;  ///< one a drop; pounds or kN where the file's unit is known
    /// Sensors that the file gives another gain than the run has, a line each. The run's are used.
    std::vector<std::string> otherGains;
    std::string deviceSerialNumber;
    std::string operatorName;
    std::string endDate;  ///< of the drops, "dd-mmm-yyyy"; the file's own text when it is no date, empty without one
};

/// Takes the drops of the first test location as those of the trial in hand. Sets NumberSensors,
/// NumberDropsPerLoadLevel and RelTrialInHand; serial numbers and initial gains that the run does not know yet are
/// taken along. An empty field counts as 0. rawFileName: the FWD's file as the operator chose it.
MonthlyReading ReadMonthlyTrial(const PDDXFile& file, CalibrationRun& run, const std::string& rawFileName);

/// All that is found in the readings of one trial.
struct MonthlyAnalysis {
    LatinSquareAnalysis square;
    VarianceTable table;  ///< see latin_square for its rows
    StandardErrorInUnits standardError;
    CriticalValues critical;
    bool SetIsSignificant = false;
    bool PositionIsSignificant = false;
    bool SensorIsSignificant = false;
    CochranResult cochran;
    bool CochranExceeded = false;
};

/// Analyses trial number `trials` of the run and stores averages, deviations, ratios, gains and sums with it. A sensor
/// with no deflection above 0 gets ratio and gain 0: nothing can be said of it. A source without F is not significant.
/// The existing gain is the initial one. cochranBefore: see FixedCriticalValues.
MonthlyAnalysis AnalyseMonthlyTrial(CalibrationRun& run, int trials, double cochranBefore, const AnalysisWarning& warn);

/// What is found of one sensor. A limit is compared with ExceedsLimit.
struct MonthlySensor {
    double meanGain = 0;            ///< over the trials
    bool isOutOfTolerance = false;  ///< ratio off 1 by more than 0.003
    bool isOutOf2Percent = false;   ///< gain off 1 by more than 0.02
    bool trialsDiffer = false;      ///< gains of the first two trials apart by 0.003 or more
    bool isToBeReset = false;       ///< mean gain off the existing one by more than 0.003
};

struct MonthlyCounts {
    std::vector<MonthlySensor> sensors;
    int OutOfTolerance = 0;
    int OutOf2Percent = 0;
    int TrialDifferenceFailures = 0;
    int SensorsToReset = 0;
};

/// Whether a gain is off 1 by more than 0.02, the limit that manufacturers recommend.
bool IsOutOf2Percent(double gain);

/// Counts over the analysed trials; ratio and gain are those of the last one.
MonthlyCounts CountMonthlySensors(const CalibrationRun& run, int trials);

/// Standard deviation of a sensor's gains over the trials; 0 for one trial.
double ReplacedGainStdDev(const CalibrationRun& run, int trials, std::size_t sensor);

/// Whether the gains of a replaced sensor lie together: two of them within less than 0.003 of each other, more with a
/// standard deviation below 0.003. trials: 2 or more.
bool ReplacedGainsAgree(const CalibrationRun& run, int trials, std::size_t sensor);

/// A line for each sensor of which nothing can be said (no existing gain, no deflection) and for each doubt about the
/// readings. For the trial in hand.
std::vector<std::string> DoubtsAboutMonthlyTrial(const CalibrationRun& run);

/// What comes after an accepted trial.
struct MonthlyDecision {
    std::optional<int> step;  ///< nothing: it stays, or message 252 asks
    /// Message 252: its OK sets RelTrials to 0 and the step to monthlyTrial, its Cancel the step to monthlyNext.
    bool asksForTwoNewTrials = false;
};

/// Decides by CurrentProcedure, RelTrials and the gains of the accepted trials. replacedSensor: index; without one a
/// replacement is never done before the fourth trial.
MonthlyDecision RelativeCalibrationStatus(const CalibrationRun& run, std::optional<std::size_t> replacedSensor);

}  // namespace bellmark
