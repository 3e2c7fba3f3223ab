#include "results/frm_results.h"

#include "app/program.h"
#include "app/workflow.h"
#include "platform/dialogs.h"
#include "results/final_outputs.h"
#include "results/text_certificate.h"

namespace bellmark {

frmResults::frmResults(Program& program)
    : Screen(program.Screens, "frmResults", "Calibration Results"),
      Header(*this, program.Header),
      Summary(*this, program),
      LoadCell(*this, program),
      Accelerometer(*this, program),
      Reference(*this, program),
      program_(program) {
    txtPleaseWait.Locked = true;
    txtPleaseWait.Text = "Please wait ...";
    txtPleaseWait.Visible = false;
    for (const Tab& tab : tabs_.All()) {
        tab.button.Click = [this, &button = tab.button] { ChooseTab(button); };
    }
    LoadCell.Changed = [this] {
        ShowNextSteps();
        SetFocus(NextStep());
    };
    Reference.Changed = [this] {
        ShowNextSteps();
        SetFocus(NextStep());
    };
    Summary.Changed = [this] {
        ShowNextSteps();
        SetFocus(NextStep());
    };
    LoadCell.WhileWaiting = [this](const auto& work) { WhileWaiting(work); };
    Reference.WhileWaiting = [this](const auto& work) { WhileWaiting(work); };
    for (Button& button : cmdPrintPDDX) button.Click = [this] { cmdPrintPDDX_Click(); };
    cmdSaveCertificate.Click = [this] { SaveCertificateText(); };
    cmdNext.Click = [this] { cmdNext_Click(); };
    cmdMainMenu.Click = [this] { cmdMainMenu_Click(); };
    frmResults::Recompute();
    tabs_.Show(LoadCell.optLoadCell);
}

void frmResults::Activated() {
    Recompute();
    KeepStepOfTab();
    SetFocus(NextStep());
}

void frmResults::Open() {
    const Procedure procedure = program_.Run.CurrentProcedure;
    if (procedure == Procedure::Flip) tabs_.Show(Accelerometer.optAccel);
    // At first the tab of the calibration in progress; later the tab that was shown last.
    if (IsCalibrationLeft()) tabs_.Show(procedure == Procedure::Sensors ? Reference.optRef : LoadCell.optLoadCell);
    Show();
}

void frmResults::OpenLoadCell() {
    tabs_.Show(LoadCell.optLoadCell);
    Show();
}

void frmResults::OpenAccelerometer() {
    tabs_.Show(Accelerometer.optAccel);
    Show();
}

void frmResults::OpenReference() {
    tabs_.Show(Reference.optRef);
    Show();
}

void frmResults::Recompute() {
    txtPleaseWait.Visible = false;
    Summary.Fill();
    LoadCell.Evaluate();
    Accelerometer.Fill();
    Reference.Evaluate();
    const bool isComplete = program_.Run.LoadCellCalComplete && program_.Run.SensorRelCalComplete;
    Summary.optSummary.BackColor = isComplete ? colors::complete : colors::window;
    Accelerometer.optAccel.BackColor = isComplete ? colors::complete : colors::window;
    ShowNextSteps();
}

void frmResults::ChooseTab(OptionButton& tab) {
    tabs_.Show(tab);
    Recompute();
    KeepStepOfTab();
    SetFocus(NextStep());
}

/// Once only the review is left, the visible tab is its step. Other steps stay unchanged.
void frmResults::KeepStepOfTab() {
    if (program_.Run.CurrentProcedure != Procedure::Results) return;
    program_.Run.CurrentProcStep = step::resultsSummary + static_cast<int>(tabs_.IndexInView());
}

bool frmResults::IsCalibrationLeft() const {
    const CalibrationRun& run = program_.Run;
    if (run.CurrentProcedure == Procedure::LoadCell) return !run.LoadCellCalComplete;
    if (run.CurrentProcedure != Procedure::Sensors) return false;
    return !run.SensorRelCalComplete && !run.LoadCellOnly;
}

void frmResults::ShowNextSteps() {
    const CalibrationRun& run = program_.Run;
    const bool isComplete = run.LoadCellCalComplete && run.SensorRelCalComplete;
    const bool isAnyAccepted = run.LoadCellCalComplete || run.SensorRelCalComplete;
    const bool onSummary = Summary.optSummary.IsChosen();
    const bool outputsAreNext = isAnyAccepted && !IsCalibrationLeft();
    const auto mark = [](Button& button, bool enabled, bool suggested, const char* whyNot) {
        button.Enabled = enabled;
        button.BackColor = enabled && suggested ? colors::suggestedNext : colors::buttonFace;
        button.ToolTip = enabled ? "" : whyNot;
    };
    mark(cmdPrintPDDX[0], isAnyAccepted, outputsAreNext && (isComplete || onSummary),
         "Available once the load cell or the deflection sensors are accepted.");
    mark(cmdPrintPDDX[1], isComplete, true,
         "Available once the load cell and the deflection sensors are accepted. For a load cell alone use Final "
         "Outputs.");
    mark(cmdNext, IsCalibrationLeft() || !onSummary, isAnyAccepted && !isComplete && !StepOfTab(),
         "There is nothing left to calibrate in this run.");
    SetDefaultButton(&NextStep());
}

/// The next step that the visible tab suggests.
Button* frmResults::StepOfTab() {
    if (Summary.optSummary.IsChosen()) return Summary.NextStep();
    if (LoadCell.optLoadCell.IsChosen()) return LoadCell.NextStep();
    return Reference.optRef.IsChosen() ? Reference.NextStep() : nullptr;
}

/// The tab's next step, or else the step after the results.
Button& frmResults::NextStep() {
    if (Button* onTab = StepOfTab()) return *onTab;
    for (Button* button : {&cmdPrintPDDX[0], &cmdNext}) {
        if (button->BackColor.Get() == colors::suggestedNext && !program_.Run.CertificationComplete) return *button;
    }
    return cmdMainMenu;
}

void frmResults::WhileWaiting(const std::function<void()>& work) {
    txtPleaseWait.Visible = true;
    try {
        work();
    } catch (...) {
        txtPleaseWait.Visible = false;
        throw;
    }
    txtPleaseWait.Visible = false;
}

void frmResults::cmdPrintPDDX_Click() {
    WhileWaiting([this] { WriteFinalOutputs(program_); });
}

void frmResults::cmdNext_Click() {
    if (IsCalibrationLeft()) {
        ReturnToProcedure(program_, program_.Run.CurrentProcedure);
    } else {
        ChooseTab(Summary.optSummary);
        SetFocus(cmdPrintPDDX[0]);
    }
}

void frmResults::cmdMainMenu_Click() {
    AreYouDone();
    program_.The<MainMenuDoor>().Open();
}

void frmResults::AreYouDone() {
    CalibrationRun& run = program_.Run;
    if (program_.Run.LoadCellCalComplete && program_.Run.SensorRelCalComplete) {
        run.InterimCalOpen = false;
        return;
    }
    std::string question = "Calibration is not complete!\r\n";
    if (!program_.Run.LoadCellCalComplete) question += "Load Cell Calibration is not complete\r\n";
    if (!program_.Run.SensorRelCalComplete) question += "Deflection Sensor Calibration is not complete\r\n";
    question += "Are you done with the FWD calibration?\r\nIf No, any interim data will be saved";
    run.InterimCalOpen = program_.ShowBox(question, box::yesNo + box::question + box::secondIsDefault) != Answer::Yes;
}

void frmResults::SaveCertificateText() {
    const auto chosen = program_.Services.dialogs.SaveFile(
        {"Save Certificate", "Text Files|*.txt|All files|*.*", program_.Run.OutputFolder, "Certificate.txt"});
    if (chosen && !chosen->empty()) WriteTextCertificate(program_, program_.Services.startDirectory / *chosen);
}

}  // namespace bellmark
