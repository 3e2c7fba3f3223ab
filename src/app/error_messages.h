#pragma once

#include <string>
#include <variant>
#include <vector>

#include "platform/dialogs.h"
#include "run/calibration_run.h"

/// The numbered messages of the procedure: title, text and style by number.
namespace bellmark {

using MessageValue = std::variant<std::string, double, DateTime>;

/// Facts for a message besides the run and its values.
struct MessageFacts {
    Path programFolder;                  ///< 300
    DateTime today{};                    ///< 112
    std::string referenceLoadCellUnits;  ///< "pound-force"; any other means kN
};

/// Composes a message into the run's MessageTitle, MessageText and LastMessageCode; shows nothing. Lines end in CR LF.
/// For a number without a message, the text is cleared when the number is above 100 and kept when it is below; the
/// title stays in both cases.
///
/// Values, in the order in which the text inserts them:
///
/// | code     | values                                                                                             |
/// |----------|----------------------------------------------------------------------------------------------------|
/// | 103      | noise in pounds                                                                                    |
/// | 104      | "A" or "B"; measured difference, V; reference difference, V; gain setting (text)                   |
/// | 105      | folder (text)                                                                                      |
/// | 112      | date of the load cell's calibration                                                                |
/// | 113      | noise in microns                                                                                   |
/// | 150      | what differs from the file, such as "Serial Number" (text)                                         |
/// | 210      | measured zero, V; stored zero, V                                                                   |
/// | 211      | measured zero, V; "A" or "B"                                                                       |
/// | 220      | variation and average of the height's deflections, in the run's unit (mils or microns)             |
/// | 221      | variation and average of the height's loads, in the run's unit (pounds or kN)                      |
/// | 302      | highest and lowest absolute acceleration, g                                                        |
/// | 303      | peak load in pounds                                                                                |
///
/// All others take none. 172, 173, 260, 270 and 271 begin with element 1 of the run's MessageParameters and clear it.
/// 300 reads the elements 1 to 4 (a file is missing where one is not empty) and 5 (their count) of MessageParameters.
/// Throws std::invalid_argument, naming code and position, when a value is missing or of the wrong type; the run is
/// then unchanged.
void ErrorMessages(CalibrationRun& run, int code, const std::vector<MessageValue>& values = {},
                   const MessageFacts& facts = {});

/// Style of the message's box; OK and help for a message without a style of its own, 0 for a number without message.
int MessageStyle(int code);

/// The composed message as a box, with the help page 10000 + code.
MessageBox ComposedBox(const CalibrationRun& run);
MessageBox ComposedBox(const CalibrationRun& run, int style);

}  // namespace bellmark
