#pragma once

#include <array>
#include <string>
#include <vector>

#include "controls/color.h"
#include "platform/dialogs.h"

/// What the screens of the annual and the monthly comparison of sensors tell and ask alike.
namespace bellmark {

class Label;
class Program;
class TextBox;
struct StandardErrorInUnits;

/// Tells which readings of the trial in hand were not usable and which units are doubtful.
void TellAboutFile(Program& program);

/// Asks whether the trial in hand is accepted in spite of its doubts; without any it is.
bool AcceptsDoubts(Program& program, const std::vector<std::string>& doubts);

/// Asks what follows the rejection of a trial: Yes repeats it, No leads to the main menu, Cancel keeps it.
/// trial: "relative calibration"
Answer AskToRepeatTrial(Program& program, const std::string& trial);

/// Shows the standard error in the run's unit, then in the other one.
void ShowStandardErrorBoxes(std::array<TextBox, 2>& boxes, std::array<Label, 2>& units,
                            const StandardErrorInUnits& error, bool englishUnits, Color color);

}  // namespace bellmark
