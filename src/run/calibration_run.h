#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <variant>
#include <vector>

#include "platform/date_time.h"
#include "platform/files.h"

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

/// What a caller hands to a numbered message: elements 1 to 5, element 0 is not used.
using MessageParameterList = std::array<std::variant<std::monostate, std::string, double, DateTime>, 6>;

struct CalibrationRun {
    // Run header
    int CurrentProcedure = 0;
    int CurrentProcStep = 0;
    bool FlagUnacceptedTrial = false;  ///< a trial is in hand that was neither accepted nor rejected
    bool ReviewMode = false;           ///< no board was found at start
    bool EnglishUnits = true;          ///< pounds and mils; otherwise kN and microns
    bool MonthlyCalibration = false;
    bool NewCalibration = false;
    bool InterimCalOpen = false;    ///< an interim calibration exists on disk
    std::string InterimFileName;    ///< bare name, "InterimCal20120309.DDX"
    std::string InterimFolderName;  ///< the same without its extension
    Path StartDirectory;
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
    Path OwnerFolder;
    Path DeviceFolder;           ///< the FWD's folder under the owner's
    Path OutputFolder;           ///< the dated folder under the FWD's; empty until it is set
    int CurrentHeightIndex = 1;  ///< from 1
    int CurrentDropIndex = 1;    ///< from 1

    // Set-up
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
    bool LoadCellCalPassed = false;
    std::string LoadCellMessage;                        ///< what the last judgement said
    std::array<bool, maxTrials> LoadCellTrialDelete{};  ///< marked by the operator to be deleted
    bool LoadCellCalComplete = false;
    double NewLoadCellCalibrationCenterGain = 0;  ///< 0 until computed
    std::string NewLoadCellCalibrationCenterDate;

    // Deflection sensors
    int RefTrials = 0;
    std::array<ReferenceTrialSummary, maxTrials> RefTrial;
    double RefCalAvg = 0;
    double RefCalStdDev = 0;
    double RefCalChange = 0;
    bool SensorRefCalGood = false;
    bool SensorRefCalComplete = false;
    std::array<std::string, maxTrials + 1> SensorRefMessage;  ///< 0 overall, then each trial
    int RelTrials = 0;
    std::array<RelativeTrialSummary, maxTrials> RelTrial;
    bool SensorRelCalGood = false;
    bool SensorRelCalComplete = false;
    std::string SensorRelMessage;  ///< what the last judgement said
    bool CertificationComplete = false;
    std::array<SensorCalRecord, maxSensors> Sensor;
    DateTime SensorCalibrationDate = ZeroDate();

    // Acquisition
    int AccelChannel = 1;
    int LoadCellChannel = 1;
    int TempChannel = 1;
    int ButtonChannel = 2;
    bool ReplayMode = false;   ///< saved drops of a finished trial are read again
    bool TrialReview = false;  ///< the operator came back to the drops of a finished trial
    bool AcquisitionActive = false;
    bool BurstCapture = false;  ///< capture fires at once, without waiting for a pulse

    // The trial in hand
    int DropSequenceIndex = 0;                   ///< from 0
    int TotalDrops = 0;                          ///< heights times drops: the sequence index once every drop is in
    std::array<double, maxDrops> DropResults{};  ///< accepted peaks in the units at acceptance
    std::array<bool, maxDrops> DropNoiseFlags{};
    std::array<HeightStatistics, maxHeights> HeightStats;
    double HeightVariationLimit = 0;   ///< largest expected standard deviation of the height in hand; advises only
    bool PlotReviewPending = false;    ///< the FWD's peaks of the trial have not been looked at on the plot yet
    bool StdDevWarningDone = false;    ///< message 214 was shown for the file that was loaded last
    std::array<bool, 26> GraphSeen{};  ///< of each sensor, since the file was loaded
    bool DropRejected = false;
    bool DropAborted = false;     ///< the wait for a capture is to stop
    bool ButtonDown = false;      ///< the hand button was pressed at the last poll
    bool ButtonHeldOver = false;  ///< it has not been seen up since its screen came
    bool ErrorPanelOpen = false;

    // Signal conditioner checks
    bool PrereqSetupDone = false;
    bool PrereqZeroDone = false;
    bool PrereqShuntDone = false;
    bool PrereqPassed = false;          ///< the list was passed once in this run: the equipment is warm
    double LastReading = 0;             ///< volts
    double MeasuredUnbalancedZero = 0;  ///< volts, as the conditioner was found
    bool ShuntWarningShown = false;
    double MeasuredPlus = 0;   ///< volts
    double MeasuredMinus = 0;  ///< volts

    // The message composed last
    std::string MessageTitle;
    std::string MessageText;
    int LastMessageCode = 0;
    MessageParameterList MessageParameters;
};

/// Number of a sensor as everyone sees it; index: from 0.
inline int ShownSensorNumber(const CalibrationRun& run, int index) {
    return run.Manufacturer == Make::Kuab ? index : index + 1;
}

/// Drops of one trial that are in use.
inline int DropsInTrial(const CalibrationRun& run) {
    return run.NumberLoadLevels * run.NumberDropsPerLoadLevel;
}

}  // namespace bellmark
