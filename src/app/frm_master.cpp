#include "app/frm_master.h"

#include "app/app_main.h"
#include "app/monthly_run.h"
#include "app/program.h"
#include "app/workflow.h"
#include "platform/dialogs.h"

namespace bellmark {

frmMaster::frmMaster(Program& program) : Screen(program.Screens, "frmMaster", "Bellmark"), program_(program) {
    for (Control* control : Controls()) {
        auto* item = dynamic_cast<Button*>(control);
        if (item && item != &cmdCancelWaiting) item->IsMenuItem = true;
    }
    fraWaiting.Visible = false;
    cmdCancelWaiting.Click = [this] { waitingCancelled_ = true; };
    mnuSetup.Click = [this] {
        if (!IsInFront("frmSetup")) program_.The<MainMenuDoor>().EditSetup();
    };
    mnuExit.Click = [this] { QuitApplication(program_); };
    mnuAccelerometerCalibration.Click = [this] { mnuAccelerometerCalibration_Click(); };
    mnuLoadCell.Click = [this] { mnuLoadCell_Click(); };
    mnuDeflectionSensors.Click = [this] { mnuDeflectionSensors_Click(); };
    mnuDocumentation.Click = [this] { program_.The<ResultsDoor>().Open(); };
    mnuRelativeCalibration.Click = [this] {
        if (BeginMonthlyRun(program_)) program_.The<RelativeDoor>().SetupMonthly();
    };
    mnuReplaceSensor.Click = [this] {
        if (BeginMonthlyRun(program_)) program_.The<RelativeDoor>().SetupGeophone();
    };
    mnuContents.Click = [this] { mnuContents_Click(); };
    mnuIndex.Click = [this] { program_.Services.showHelp(helpPage::index); };
    mnuAbout.Click = [this] { program_.The<StartFormDoor>().ShowAbout(); };

    // The load cell itself is calibrated by a laboratory; the center only records the result.
    mnuReferenceLoadCellCalibration.Enabled = false;
    ShowWhatIsAllowed();
}

bool frmMaster::IsInFront(const char* screen) const {
    const Screen* front = Stack().Front();
    return front && front->Name() == screen;
}

void frmMaster::mnuContents_Click() {
    const Screen* front = Stack().Front();
    program_.Services.showHelp(front ? front->HelpContext() : helpPage::contents);
}

void frmMaster::mnuAccelerometerCalibration_Click() {
    // In front already, for a procedure that it goes back to.
    if (IsInFront("frmFlipCalibration")) return;
    program_.Header.SetProcedureName(ProcedureTitle(Procedure::Flip));
    program_.Run.CurrentProcedure = Procedure::Flip;
    program_.The<FlipCalibrationDoor>().Start();
}

bool frmMaster::OperatorWantsToSwitch(const char* question) {
    // Both switches use this title.
    return program_.ShowBox(question, box::yesNo + box::question + box::secondIsDefault,
                            "Start Load Cell Calibration") == Answer::Yes;
}

void frmMaster::mnuLoadCell_Click() {
    const bool go = program_.Run.CurrentProcedure == Procedure::LoadCell ||
                    OperatorWantsToSwitch("Do you really want to switch to Load Cell Calibration?");
    if (go) program_.The<MainMenuDoor>().CalibrateLoadCell();
}

void frmMaster::mnuDeflectionSensors_Click() {
    const bool go = program_.Run.CurrentProcedure == Procedure::Sensors ||
                    OperatorWantsToSwitch("Do you really want to switch to Sensor Calibration?");
    if (go) program_.The<MainMenuDoor>().CalibrateSensors();
}

void frmMaster::CloseRequested() {
    const Answer answer =
        program_.ShowBox("Are you sure you want to terminate the FWD Calibration software?", box::yesNo);
    if (answer == Answer::Yes) QuitApplication(program_);
}

void frmMaster::BeginWaiting(const std::string& text) {
    waitingCancelled_ = false;
    lblWaiting.Caption = text;
    fraWaiting.Visible = true;
    // Another file or screen chosen meanwhile would find only half of the data.
    Stack().LockAllBut(&fraWaiting);
}

void frmMaster::EndWaiting() {
    fraWaiting.Visible = false;
    Stack().LockAllBut(nullptr);
}

void frmMaster::AllowWhatNeedsARun(bool isInHand) {
    runIsInHand_ = isInHand;
    ShowWhatIsAllowed();
}

void frmMaster::AllowProcedures(bool loadCell, bool sensors) {
    loadCellIsAllowed_ = loadCell;
    sensorsAreAllowed_ = sensors;
    ShowWhatIsAllowed();
}

void frmMaster::SetMeasuring(bool measuring) {
    measuring_ = measuring;
    ShowWhatIsAllowed();
}

void frmMaster::ShowWhatIsAllowed() {
    const bool free = !measuring_;
    mnuSetup.Enabled = free && runIsInHand_;
    mnuAccelerometerCalibration.Enabled = free && runIsInHand_ && program_.Has<FlipCalibrationDoor>();
    mnuLoadCell.Enabled = free && loadCellIsAllowed_;
    mnuDeflectionSensors.Enabled = free && sensorsAreAllowed_;
    mnuDocumentation.Enabled = free && runIsInHand_ && program_.Has<ResultsDoor>();
    mnuRelativeCalibration.Enabled = free && program_.Has<RelativeDoor>();
    mnuReplaceSensor.Enabled = free && program_.Has<RelativeDoor>();
}

}  // namespace bellmark
