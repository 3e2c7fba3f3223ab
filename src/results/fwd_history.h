#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/date_time.h"

/// The earlier calibrations of an FWD. Its PDDX file holds them in the sections "Device Calibration_1" and up, the
/// oldest first, and counts them by NumberCalibrations in "Device Calibration".
namespace bellmark {

struct CalibrationRun;
class PDDXFile;
class ProfileStrings;

/// The count is stored in 16 bits.
inline constexpr int mostCalibrations = 32767;

/// One calibration, in the words of the file. What the file does not tell is empty.
struct EarlierCalibration {
    std::string loadCellSerialNumber;
    std::string loadCellDate;
    std::string loadCellGain;
    std::string sensorDate;
    std::vector<std::string> sensorSerialNumbers;
    std::vector<std::string> sensorGains;  ///< as many as the file has, however many sensors the run has
    std::string centerCode;
    const std::string& Date() const { return loadCellDate.empty() ? sensorDate : loadCellDate; }
};

/// The counted calibrations, the oldest first; number n is at index n - 1. One that has no section is empty. Throws
/// std::runtime_error, in words for the operator, when the count cannot be right: above 32767, or more than 1000 above
/// what the file holds.
std::vector<EarlierCalibration> ReadHistory(const ProfileStrings& strings, PDDXFile& document);

/// The highest number that a calibration in the file has, counted or not; 0 when there is none.
int HighestCalibration(const ProfileStrings& strings);

/// What the file says otherwise of the device than the run, as message 150 names it: "FWD name", "FWD model number",
/// "FWD Serial Number".
std::vector<std::string> DeviceDifferences(const PDDXFile& document, const CalibrationRun& run);

struct HistoryCell {
    std::string text;
    std::string doubt;  ///< why the text is not to be taken as it stands; empty for most
};

/// The table of the history: its headings, and the row of one calibration. A column for each sensor of the run.
std::vector<std::string> HistoryHeadings(const CalibrationRun& run);
std::vector<HistoryCell> HistoryRow(const EarlierCalibration& calibration, const CalibrationRun& run);

/// The text of a document with the calibrations of a history that it does not hold, as they stand there, and with the
/// greater count of both. All else in it stays.
std::string WithHistory(std::string_view document, const ProfileStrings& history);

struct HistoryUpdate {
    std::string text;  ///< of the document
    int number = 0;    ///< of the run in it
};

/// Adds the run to the text of a document. Counted calibrations of the history that was read, which the document does
/// not hold, are copied into it as they stand. The run gets the first number above all of both, so that no calibration
/// is ever replaced. All else in the document stays. Throws std::runtime_error, in words for the operator, when the
/// numbers are used up.
HistoryUpdate AddRunToHistory(std::string_view document, const ProfileStrings& history, const CalibrationRun& run,
                              DateTime now);

}  // namespace bellmark
