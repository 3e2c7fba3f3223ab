#pragma once

/// The state of a run: a procedure and a step of it. Files hold both as numbers.
namespace bellmark {

enum class Procedure {
    None = 0,
    Setup = 1,
    ReferenceLoadCell = 2,
    Flip = 3,  ///< daily calibration of the reference accelerometer against gravity
    Sensors = 4,
    LoadCell = 5,
    MonthlyRelative = 6,
    SensorReplacement = 7,
    TriggerLevel = 8,
    NumberOfDrops = 9,
    Results = 10
};

/// The FWD's own operator compares its sensors, without a calibration center.
inline bool IsMonthly(Procedure procedure) {
    return procedure == Procedure::MonthlyRelative || procedure == Procedure::SensorReplacement;
}

/// Steps, grouped by procedure.
namespace step {
inline constexpr int none = 0;

inline constexpr int editSetup = 10;
inline constexpr int setupCenter = 11;
inline constexpr int setupFWD = 12;
inline constexpr int setupSequence = 13;
inline constexpr int setupEnds = 15;

inline constexpr int flipEntered = 31;
inline constexpr int flipRunning = 32;
inline constexpr int flipMeasured = 33;
inline constexpr int flipAccepted = 39;

inline constexpr int sensorsCheck = 40;  ///< prerequisites of a pair of reference trials
inline constexpr int sensorsTrialStarts = 41;
inline constexpr int sensorsTrial = 42;  ///< drops in hand, or a trial to be repeated
inline constexpr int sensorsFileRead = 43;
inline constexpr int sensorsRelative = 44;

inline constexpr int loadCellTrialStarts = 51;
inline constexpr int loadCellTrial = 52;
inline constexpr int loadCellFileRead = 53;

inline constexpr int monthlySetup = 60;
inline constexpr int monthlyTrial = 61;
inline constexpr int monthlyAnalysis = 62;
inline constexpr int monthlyNext = 63;
inline constexpr int monthlyFinished = 69;

inline constexpr int replacementSetup = 70;
inline constexpr int replacementTrial = 71;
inline constexpr int replacementAnalysis = 72;
inline constexpr int replacementNext = 73;
inline constexpr int replacementFinished = 79;

inline constexpr int triggerCheck = 81;
inline constexpr int triggerRunning = 82;
inline constexpr int triggerFinished = 83;

inline constexpr int dropsCheck = 91;
inline constexpr int dropsRunning = 93;

inline constexpr int resultsSummary = 101;  ///< the page of the results shown, up to 104
inline constexpr int resultsReference = 103;
inline constexpr int resultsLast = 104;
}  // namespace step

}  // namespace bellmark
