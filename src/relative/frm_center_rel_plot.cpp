#include "relative/frm_center_rel_plot.h"

#include "app/analysis_warning.h"
#include "app/monthly_run.h"
#include "app/print_if_asked.h"
#include "app/program.h"
#include "app/save_text.h"
#include "fwd/fwd_intake.h"
#include "platform/dialogs.h"
#include "platform/text.h"
#include "relative/relative_boxes.h"
#include "relative/relative_plot.h"
#include "relative/relative_report.h"
#include "relative/relative_trial.h"

namespace bellmark {

frmCenterRelPlot::frmCenterRelPlot(Program& program)
    : Screen(program.Screens, "frmCenterRelPlot", "Relative Calibration Plot"),
      Header(*this, program.Header),
      program_(program),
      run_(program.Run) {
    cmdNext.Click = [this] { cmdNext_Click(); };
    cmdBack.Click = [this] { cmdBack_Click(); };
    cmdReject.Click = [this] { cmdReject_Click(); };
    Command1.Click = [this] { program_.Services.printScreen(Name()); };
    cmdNext.BackColor = colors::suggestedNext;
    SetDefaultButton(&cmdNext);
}

void frmCenterRelPlot::DrawRelativePlot() {
    const bool monthly = run_.MonthlyCalibration;
    program_.Header.SetProcedureName(monthly ? "FWD Monthly Relative Calibration" : "FWD Annual Relative Calibration");
    // Without a trial in hand the one accepted last is looked at again.
    const bool isInHand = run_.RelTrialInHand.has_value();
    const int trial = isInHand || run_.RelTrials == 0 ? run_.RelTrials : run_.RelTrials - 1;
    const Plot plot = RelativePlot(run_, static_cast<std::size_t>(trial));
    Header.PageTitle.Caption = plot.title;
    pctRelative.Draw(plot);
    lblNote.Visible = !monthly;  // a monthly trial shows the raw deflections
    cmdReject.Enabled = isInHand;
    cmdNext.Caption = monthly ? "&Next" : "&Accept";
    lblNextStep.Caption = monthly ? "Look for drops that stand apart from those of their sensor, then go on: NEXT."
                                  : "Look for drops that stand apart from those of their sensor, then ACCEPT the trial "
                                    "or reject it.";
    Show();
    SetFocus(cmdNext);
}

void frmCenterRelPlot::cmdNext_Click() {
    if (run_.MonthlyCalibration) {
        if (run_.RelTrialInHand)
            run_.CurrentProcStep = IsReplacement(run_) ? step::replacementAnalysis : step::monthlyAnalysis;
        program_.The<RelativeResultsDoor>().Open();
        return;
    }
    if (!AcceptsDoubts(program_, DoubtsAboutTrial(run_))) return;
    // The report comes first: if it cannot be written, the trial still waits for its answer.
    WriteReport();
    program_.The<CenterRelativeDoor>().AcceptRelativeTrial();
}

void frmCenterRelPlot::WriteReport() {
    const auto trial = static_cast<std::size_t>(run_.RelTrials);
    const DateTime now = program_.Now();
    const std::string name = RelativeReportName(run_, trial, now);
    const std::string rawFile = run_.RelTrialInHand ? run_.RelTrialInHand->rawFileName : std::string();
    const Path path = program_.InterimFolder() / PathFromText(name);
    program_.Services.files.CreateFolder(program_.InterimFolder());
    SaveText(program_, path, PrintReportRel(run_, program_.Center, trial, {name, rawFile, now}, WarnInBox(program_)));
    PrintIfAsked(program_, path);
}

void frmCenterRelPlot::cmdBack_Click() {
    if (run_.MonthlyCalibration) {
        program_.The<RelativeResultsDoor>().Open();
    } else {
        program_.The<CenterRelativeDoor>().ReturnFromPlot();
    }
}

void frmCenterRelPlot::cmdReject_Click() {
    const Answer rejects = program_.ShowBox(
        "Do you want to terminate or reject this trial?\r\n"
        "Clicking on YES will clear the data (if any) and start over.\r\n"
        "Clicking NO will allow you to continue from this point.\r\n"
        "No data for any previous trials will be lost.",
        box::yesNo + box::question, "Rejected Relative Calibration");
    if (rejects != Answer::Yes) return;
    BeginRelativeTrial(run_);
    if (run_.MonthlyCalibration) {
        ReturnToMonthlyTrial(program_);
    } else {
        program_.The<CenterRelativeDoor>().BeginTrial();
    }
}

}  // namespace bellmark
