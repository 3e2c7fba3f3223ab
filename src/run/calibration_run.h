#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/date_time.h"
#include "platform/files.h"
#include "run/procedure.h"

/// The calibration under way, as plain data. Names follow the keys of the files they are saved under.
namespace bellmark {

inline constexpr std::size_t maxDrops = 41;          ///< a drop list has the indexes 0 to 40
inline constexpr std::size_t maxRelativeDrops = 60;  ///< monthly trials: up to 5 drops in each of 12 positions
inline constexpr std::size_t maxTrials = 4;
inline constexpr std::size_t maxSensors = 12;
inline constexpr std::size_t maxSets = 10;
inline constexpr std::size_t maxHeights = 5;

enum class Make { Dynatest = 0, CarlBro = 1, Jils = 2, Kuab = 3 };

/// One reference trial of the load cell or of one sensor. Peaks are in the run's units; index 0 is the first drop.
struct TrialRecord {
    std::array<double, maxDrops> RefDropData{};  ///< the reference instrument's peaks
    std::array<double, maxDrops> DropData{};     ///< the FWD's peaks
    double AdjFactor = 0;                        ///< slope of reference on FWD peaks through the origin
    double Gain = 0;
    double StdErrAdjFactor = 0;
};

/// One relative trial of one sensor.
struct RelativeTrialRecord {
    std::array<double, maxRelativeDrops> DropData{};
    double AdjFactor = 0;
    double Gain = 0;
    int Position = 0;  ///< in the stand, from the bottom, 1 is the first
    double Average = 0;
    double StdDev = 0;
};

struct SensorCalRecord {
    std::string SerialNumber;
    double InitialGain = 0;
    double InterimGain = 0;
    double FinalGain = 0;  ///< exactly 0 in the first sensor: none stored yet
    std::array<TrialRecord, maxTrials> RefTrial;
    std::array<RelativeTrialRecord, maxTrials> RelTrial;
};

/// A reference trial over all sensors.
struct ReferenceTrialSummary {
    double Avg = 0;
    double StdDev = 0;
    double Change = 0;
};

/// A relative trial that was read and neither accepted nor rejected. Its numbers follow those of the accepted trials,
/// at index RelTrials.
struct RelativeTrialInHand {
    std::string rawFileName;  ///< the FWD's file as the operator chose it
    long long dropsInFile = 0;
    /// What stands where a reading should be and is none, as "Drop 5, sensor 3: \"abc\"". It counts as 0.
    std::vector<std::string> unreadable{};
    std::vector<std::string> unitDoubts{};  ///< units of the file that are unknown or not the run's, a line each
};

/// A relative trial over all sensors and sets.
struct RelativeTrialSummary {
    double Avg = 0;
    double StdDev = 0;
    double ChiSq = 0;
    std::array<double, maxSets> SetAvg{};
    std::array<double, maxSets> SetStdDev{};
    double SSSet = 0;
    double SSSensor = 0;
    double SSTotal = 0;
};

/// Mean and standard deviation of one height's peaks, in the run's units.
struct HeightStatistics {
    double RefMean = 0;
    double RefStdDev = 0;
    double FWDMean = 0;
    double FWDStdDev = 0;
};

/// Heights and drops of a trial, and the units of its peaks. They belong to the trial, even if the set-up changes
/// later.
struct TrialShape {
    int heights = 0;
    int dropsPerHeight = 0;
    bool englishUnits = true;  ///< pounds and mils; otherwise kN and microns
    int Drops() const { return heights * dropsPerHeight; }
    friend bool operator==(const TrialShape&, const TrialShape&) = default;
};

/// The review of one drop of a trial.
struct DropReview {
    int index = 0;  ///< from 0
    bool isCounted =
        false;  ///< its trial is counted and waits for its answer; otherwise its drops are still being taken
};

/// The trial whose drops are being taken, or that waits for its answer.
struct TrialInHand {
    Procedure procedure = Procedure::None;  ///< LoadCell or Sensors; None: no trial was begun
    int number = 0;                         ///< from 1
    TrialShape shape;
    int DropSequenceIndex = 0;                   ///< number of drops taken; index of the next one, from 0
    std::array<double, maxDrops> DropResults{};  ///< accepted peaks, in the trial's units
    std::array<bool, maxDrops> DropNoiseFlags{};
    std::array<bool, maxDrops> DropRangeFlags{};  ///< beyond the range of the reference instrument
    std::optional<DropReview> reviewed;
    /// A saved drop is read again in place of a capture.
    bool ReplayMode() const { return reviewed.has_value(); }
    /// The operator came back to the drops from the FWD's data.
    bool TrialReview() const { return reviewed && reviewed->isCounted; }
    /// Drops of it were in hand when the program ended, and are not any more.
    bool wasInterrupted = false;
};

/// What a caller hands to a numbered message: elements 1 to 5, element 0 is not used.
using MessageParameterList = std::array<std::variant<std::monostate, std::string, double, DateTime>, 6>;

/// State of the current run of the program; no file keeps it.
struct Session {
    bool ReviewMode = false;  ///< no board was found at start
    Path StartDirectory;
    Path DocumentForFWD;                ///< written by the final outputs; empty until then
    bool StoreIsOfThisSitting = false;  ///< the run's file and folder were opened or made since the program started

    int AccelChannel = 1;
    int LoadCellChannel = 1;
    int TempChannel = 0;
    int ButtonChannel = 2;
    bool AcquisitionActive = false;
    bool BurstCapture = false;  ///< capture fires at once, without waiting for a pulse

    std::optional<bool> ReadsF25Files;  ///< not the converter does; unknown until the operator was asked
    bool DropRejected = false;
    bool DropAborted = false;     ///< the wait for a capture is to stop
    bool ButtonDown = false;      ///< the hand button was pressed at the last poll
    bool ButtonHeldOver = false;  ///< it has been down since its screen came up
    bool ErrorPanelOpen = false;
    bool PlotReviewPending = false;    ///< the FWD's peaks of the trial have not been looked at on the plot yet
    bool StdDevWarningDone = false;    ///< message 214 was shown for the file that was loaded last
    std::array<bool, 26> GraphSeen{};  ///< of each sensor, since the file was loaded

    // The message composed last
    std::string MessageTitle;
    std::string MessageText;
    int LastMessageCode = 0;
    MessageParameterList MessageParameters;
};

struct CalibrationRun : Session {
    // Run header
    Procedure CurrentProcedure = Procedure::None;
    int CurrentProcStep = step::none;
    bool FlagUnacceptedTrial = false;  ///< a trial is in hand that was neither accepted nor rejected
    bool EnglishUnits = true;          ///< pounds and mils; otherwise kN and microns
    bool MonthlyCalibration = false;
    bool NewCalibration = false;
    bool InterimCalOpen = false;    ///< an interim calibration exists on disk
    std::string InterimFileName;    ///< bare name, "InterimCal20120309.DDX"
    std::string InterimFolderName;  ///< the same without its extension
    int NumberLoadLevels = 4;
    int NumberDropsPerLoadLevel = 6;
    int NumberSensors = 7;
    int SensorStand = 0;
    Make Manufacturer = Make::Dynatest;
    std::string DeviceOwner;
    std::string DeviceSerialNumber;
    std::string DeviceName;             ///< base name of DeviceFolder
    std::string DeviceDesignationName;  ///< the FWD's own name for itself
    std::string DeviceModelNumber;
    std::string DeviceLoadType;
    std::string OperatorName;  ///< of the FWD
    int SensorType = 0;        ///< index in the make's list
    Path SimDataLocation;      ///< where the simulated board finds its drops; empty for the program folder
    Path OwnerFolder;
    Path DeviceFolder;           ///< the FWD's folder under the owner's
    Path OutputFolder;           ///< the dated folder under the FWD's; empty until it is set
    int CurrentHeightIndex = 1;  ///< from 1
    int CurrentDropIndex = 1;    ///< from 1

    // Set-up
    bool IsInHand = false;        ///< a run was begun or opened; without one there is nothing to set up or to measure
    bool CenterApproved = false;  ///< the operator has confirmed the center and its equipment
    bool ProgramStarted = false;  ///< from the start of a new run until set-up ends
    bool SetupComplete = false;
    bool TriggerLevelSet = false;
    bool NumberDropsSet = false;
    bool LoadCellOnly = false;
    bool ReviewFromInterim = false;  ///< an interim calibration was loaded with no board present
    bool AutoPrint = false;
    bool TransferFileVersion2 = false;  ///< the data folder's interim file was written by version 2 or later

    // Load cell
    std::string LoadCellSerialNumber;
    double LoadCellInitialGain = 0;
    DateTime LoadCellCalibrationDate = ZeroDate();
    int LoadCellRefTrials = 0;
    std::array<TrialRecord, maxTrials> LCTrial;
    std::array<TrialShape, maxTrials> LCTrialShape;  ///< of each counted trial
    bool LoadCellCalPassed = false;
    std::string LoadCellMessage;                        ///< the text of the last judgement
    std::array<bool, maxTrials> LoadCellTrialDelete{};  ///< marked by the operator to be deleted
    bool LoadCellCalComplete = false;
    double NewLoadCellCalibrationCenterGain = 0;  ///< 0 until computed
    std::string NewLoadCellCalibrationCenterDate;

    // Deflection sensors
    int RefTrials = 0;
    std::array<TrialShape, maxTrials> RefTrialShape;  ///< of each counted trial, all its sensors alike
    std::array<ReferenceTrialSummary, maxTrials> RefTrial;
    double RefCalAvg = 0;
    double RefCalStdDev = 0;
    double RefCalChange = 0;
    bool SensorRefCalGood = false;
    bool SensorRefCalComplete = false;
    std::array<std::string, maxTrials + 1> SensorRefMessage;  ///< 0 overall, then each trial
    int RelTrials = 0;
    std::array<RelativeTrialSummary, maxTrials> RelTrial;
    std::optional<RelativeTrialInHand> RelTrialInHand;  ///< nothing: no relative trial waits for its answer
    Path MonthlyDataFile;                               ///< of the monthly trial read last, as the operator chose it
    std::optional<std::size_t> ReplacedSensor;          ///< index; nothing until one is marked
    bool SensorRelCalGood = false;
    bool SensorRelCalComplete = false;
    std::string SensorRelMessage;  ///< the text of the last judgement
    bool CertificationComplete = false;
    std::int16_t NumberCalibrations = 0;  ///< in the history that was read last, the run included once it was added
    std::array<SensorCalRecord, maxSensors> Sensor;
    DateTime SensorCalibrationDate = ZeroDate();

    TrialInHand Trial;

    // Signal conditioner checks
    bool PrereqSetupDone = false;
    bool PrereqZeroDone = false;
    bool PrereqShuntDone = false;
    bool PrereqPassed = false;                     ///< the list was passed once in this run: the equipment is warm
    double LastReading = 0;                        ///< volts
    std::optional<double> MeasuredUnbalancedZero;  ///< volts, the conditioner as found; nothing when not known
    bool ShuntWarningShown = false;
    std::optional<double> MeasuredPlus;   ///< volts
    std::optional<double> MeasuredMinus;  ///< volts
};

/// How many sensors have a record in the run.
inline std::size_t SensorCount(const CalibrationRun& run) {
    return static_cast<std::size_t>(std::clamp(run.NumberSensors, 0, static_cast<int>(maxSensors)));
}

/// Number of a sensor as operators know it; index: from 0.
inline int ShownSensorNumber(const CalibrationRun& run, int index) {
    return run.Manufacturer == Make::Kuab ? index : index + 1;
}

}  // namespace bellmark
