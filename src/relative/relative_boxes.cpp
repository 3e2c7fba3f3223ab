#include "relative/relative_boxes.h"

#include "app/program.h"
#include "controls/controls.h"
#include "fwd/fwd_intake.h"
#include "platform/format.h"
#include "relative/relative_analysis.h"

namespace bellmark {

void TellAboutFile(Program& program) {
    if (!program.Run.RelTrialInHand) return;
    const RelativeTrialInHand& file = *program.Run.RelTrialInHand;
    if (!file.unreadable.empty()) {
        program.ShowBox("These readings of the file are missing or cannot be used. They count as 0:\r\n" +
                            ListedLines(file.unreadable) + "Please check the data file.",
                        box::exclamation);
    }
    if (!file.unitDoubts.empty()) {
        std::string text;
        for (const std::string& doubt : file.unitDoubts) text += doubt + "\r\n";
        program.ShowBox(text + "Its values are taken as they stand. Check them carefully.", box::exclamation);
    }
}

bool AcceptsDoubts(Program& program, const std::vector<std::string>& doubts) {
    if (doubts.empty()) return true;
    return program.ShowBox("There are doubts about this trial:\r\n" + ListedLines(doubts) +
                               "Do you want to accept it all the same?",
                           box::yesNo + box::exclamation + box::secondIsDefault) == Answer::Yes;
}

Answer AskToRepeatTrial(Program& program, const std::string& trial) {
    return program.ShowBox("Do you want to repeat the " + trial +
                               " trial?\r\n"
                               "Clicking on YES or NO will cause the trial data to be lost!\r\n"
                               "Clicking NO will take you to the Main Menu.",
                           box::yesNoCancel + box::question, "Rejected Relative Calibration");
}

void ShowStandardErrorBoxes(std::array<TextBox, 2>& boxes, std::array<Label, 2>& units,
                            const StandardErrorInUnits& error, bool englishUnits, Color color) {
    const std::size_t mils = englishUnits ? 0 : 1;
    const std::size_t microns = 1 - mils;
    boxes[mils].Text = Format(error.mils, "#0.000");
    boxes[microns].Text = Format(error.microns, "#,##0.0");
    units[mils].Caption = "mils";
    units[microns].Caption = "microns";
    for (TextBox& box : boxes) box.BackColor = color;
}

}  // namespace bellmark
