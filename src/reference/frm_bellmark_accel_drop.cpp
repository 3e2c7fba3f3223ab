#include "reference/frm_bellmark_accel_drop.h"

#include <algorithm>

#include "app/doors.h"
#include "app/interim_store.h"
#include "app/journal.h"
#include "app/program.h"
#include "app/replay.h"
#include "platform/dialogs.h"
#include "platform/format.h"
#include "platform/numbers.h"
#include "reference/hand_button.h"
#include "reference/trigger.h"
#include "run/trial.h"

namespace bellmark {

namespace {
constexpr Color armed = colors::complete;
constexpr Color captured = colors::warning;
constexpr int blanksBeforeDate = 26;
}  // namespace

frmBellmark_AccelDrop::frmBellmark_AccelDrop(Program& program)
    : Screen(program.Screens, "frmBellmark_AccelDrop", "Drop"), Header(*this, program.Header), program_(program) {
    for (OptionButton* option : {&optAcceleration, &optVelocity, &optDeflection, &optStdDev})
        option->Click = [this] { PlotResponse(); };
    fraMessage.Visible = false;
    cmdErrOK.Click = [this] { cmdErrOK_Click(); };
    cmdAccept.Click = [this] { cmdAccept_Click(); };
    cmdReject.Click = [this] { cmdReject_Click(); };
    cmdMainMenu.Click = [this] { cmdMainMenu_Click(); };
    chkZoom.Click = [this] { chkZoom_Click(); };
    TimerDrop.Tick = [this] { TimerDrop_Tick(); };
}

void frmBellmark_AccelDrop::ClearDropResults() {
    for (Label* label : {&lblPeakMicrons, &lblPeakMils, &lblRiseTime, &lblZeroCalc0, &lblZeroCalc1})
        label->Caption = "";
    DropRecord& drop = program_.Drop;
    const auto count = static_cast<std::ptrdiff_t>(drop.NumSamples) + 1;
    for (auto* values : {&drop.AbsAccel, &drop.Velocity, &drop.Displacement, &drop.AccelSD25, &drop.AccelSD100}) {
        std::fill(values->begin(), values->begin() + count, 0.0);
    }
}

void frmBellmark_AccelDrop::SetState(const char* words, Color color) {
    lblState.Caption = words;
    SetBackColor(color);
}

void frmBellmark_AccelDrop::Start() {
    CalibrationRun& run = program_.Run;
    EndReplay(program_);
    run.DropAborted = false;
    run.DropRejected = false;
    cmdAccept.Caption = "&Accept";
    ShowDrop();
}

void frmBellmark_AccelDrop::StartReview() {
    program_.Run.DropAborted = false;
    cmdAccept.Caption = "&Return";
    ShowDrop();
}

void frmBellmark_AccelDrop::DisableButtons() {
    cmdAccept.Enabled = false;
    cmdReject.Enabled = false;
}

bool frmBellmark_AccelDrop::CheckTrigger(double volts) {
    return bellmark::CheckTrigger(program_.Run, program_.Center, program_.Drop, volts);
}

void frmBellmark_AccelDrop::TellOfNewStart() {
    lblState.Caption = "Ready: drop now. The computer fell behind the board, and the capture began anew.";
}

void frmBellmark_AccelDrop::PrepareDrop() {
    CalibrationRun& run = program_.Run;
    const DropPlace place = PlaceOf(run.Trial.shape, DropShown(run.Trial));
    run.CurrentHeightIndex = place.height;
    run.CurrentDropIndex = place.drop;
    lblHeightDrop.Caption = "Height: " + NumberText(place.height) + "  Drop: " + NumberText(place.drop);
    lblTrialDrop.Caption = "Trial " + NumberText(NumberOfTrialShown(run)) + ", drop " +
                           NumberText(DropShown(run.Trial) + 1) + " of " + NumberText(run.Trial.shape.Drops());
    lblFilename.Caption = "Save Directory = " + PathText(program_.InterimFolder()) + "\r\n" +
                          std::string(blanksBeforeDate, ' ') + Format(program_.Now(), "dd-mmm-yyyy ttttt");
    DisableButtons();
    chkZoom.Visible = false;
    Frame1.Visible = false;
    fraMessage.Visible = false;
    run.ErrorPanelOpen = false;
    ClearDropResults();
    picDropResponse.Clear();
    lblNoise.Visible = false;
    // The button's channel must not be converted during an acquisition.
    PollButton(false);
    program_.The<CollectionDoor>().PollButton(false);
    Show();
    // An accidental Enter must not end the wait for the drop.
    SetDefaultButton(nullptr);
    SetFocus(picDropResponse);
}

void frmBellmark_AccelDrop::ShowDrop() {
    CalibrationRun& run = program_.Run;
    PrepareDrop();
    instrument_ = MakeInstrument(program_);
    const auto verdict = instrument_->Measure(
        {[this] { SetState("Ready: drop now", armed); }, [this] { SetState("Captured: accept or reject", captured); }});
    if (!verdict) {
        LeaveReview();
        RejectDrop();
        return;
    }
    acceptable_ = verdict->hasPeak;
    outOfRange_ = verdict->outOfRange;
    ShowNoiseVerdict(*verdict);
    ShowResults(*verdict);
    chkZoom.Value = true;
    chkZoom.Caption = "&Zoomed In";
    optDeflection.Choose();
    PlotResponse();
    lblFilename.Visible = true;
    AllowAnswers();
    run.ButtonDown = false;
    PollButton(true);
    if (!run.Trial.ReplayMode()) {
        Note("captured, peak " + lblPeakMils.Caption.Get() + " or " + lblPeakMicrons.Caption.Get());
        if (!WriteDropFile()) {
            acceptable_ = false;
            cmdAccept.Enabled = false;
        }
    }
    for (const NumberedMessage& message : verdict->boxes) {
        program_.Compose(message.code, message.values);
        program_.ShowComposed(box::critical + box::helpButton);
    }
    run.LastMessageCode = 0;
}

void frmBellmark_AccelDrop::ShowNoiseVerdict(const DropVerdict& verdict) {
    const bool excess = verdict.panel.has_value();
    lblNoise.Visible = excess;
    const Color color = excess ? colors::mustBeUpdated : colors::buttonFace;
    lblZeroCalc0.BackColor = color;
    lblZeroCalc1.BackColor = color;
    if (!excess) return;
    program_.Compose(verdict.panel->code, verdict.panel->values);
    OpenPanel();
}

void frmBellmark_AccelDrop::OpenPanel() {
    panelHelp_ = helpPage::firstMessage + program_.Run.LastMessageCode;
    lblMessageTitle.Caption = program_.Run.MessageTitle;
    lblMessageText.Caption = program_.Run.MessageText;
    DisableButtons();
    fraMessage.Visible = true;
    program_.Run.ErrorPanelOpen = true;
}

void frmBellmark_AccelDrop::ShowResults(const DropVerdict& verdict) {
    const DropRecord& drop = program_.Drop;
    const InstrumentTexts& texts = TextsOf(program_.Run.CurrentProcedure);
    lblPeakCaption.Caption = texts.peak;
    lblZeroCaption.Caption = texts.start;
    lblMilsUnit.Caption = texts.englishUnit;
    lblMicronsUnit.Caption = texts.metricUnit;
    optAcceleration.Caption = texts.acceleration;
    optVelocity.Caption = texts.velocity;
    optDeflection.Caption = texts.deflection;
    optStdDev.Visible = texts.stdDev != nullptr;
    if (texts.stdDev) optStdDev.Caption = texts.stdDev;
    lblPeakMicrons.Caption = Format(drop.PeakMetric, texts.metricPicture);
    lblPeakMils.Caption = Format(drop.PeakEnglish, texts.englishPicture);
    lblRiseTime.Caption = Format(drop.RiseTime, "#0.0");
    lblZeroCalc0.Caption = verdict.startEnglish;
    lblZeroCalc1.Caption = verdict.startMetric;
    lblZeroUnit0.Caption = texts.englishUnit;
    lblZeroUnit1.Caption = texts.metricUnit;
    if (!verdict.advice.empty()) lblState.Caption = verdict.advice;
}

void frmBellmark_AccelDrop::AllowAnswers() {
    const bool replay = program_.Run.Trial.ReplayMode();
    if (program_.Run.ErrorPanelOpen) {
        SetDefaultButton(&cmdErrOK);
        SetFocus(cmdErrOK);
        return;
    }
    // A drop without a pulse, or without its file, has no peak to accept; a drop under review can always be left.
    cmdAccept.Enabled = acceptable_ || replay;
    cmdReject.Enabled = !replay;
    chkZoom.Visible = true;
    Frame1.Visible = true;
    SuggestAnswer();
}

/// A drop beyond the instrument's range should be rejected, so that accepting it is a deliberate step.
void frmBellmark_AccelDrop::SuggestAnswer() {
    const bool reject = outOfRange_ && cmdReject.Enabled;
    cmdAccept.BackColor = reject || !cmdAccept.Enabled ? colors::buttonFace : colors::suggestedNext;
    cmdReject.BackColor = reject ? colors::suggestedNext : colors::buttonFace;
    SetDefaultButton(reject ? &cmdReject : &cmdAccept);
    SetFocus(reject ? cmdReject : cmdAccept.Enabled ? static_cast<Control&>(cmdAccept) : cmdMainMenu);
}

std::string frmBellmark_AccelDrop::FileName() const {
    const CalibrationRun& run = program_.Run;
    return DropFileName(run.CurrentProcedure, NumberOfTrialShown(run), {run.CurrentHeightIndex, run.CurrentDropIndex});
}

/// Into the journal, about the drop in hand.
void frmBellmark_AccelDrop::Note(const std::string& event) {
    AddToJournal(program_, "Drop " + FileName() + ' ' + event);
}

bool frmBellmark_AccelDrop::WriteDropFile() {
    FileSystem& files = program_.Services.files;
    const std::string name = FileName();
    try {
        files.CreateFolder(program_.InterimFolder());
        ReplaceTextFile(files, program_.InterimFolder() / PathFromText(name), instrument_->FileText(program_.Now()));
        return true;
    } catch (const std::exception& error) {
        program_.Log(error.what());
        program_.ShowBox(std::string("The drop could not be saved, so it cannot be accepted.\r\n") + error.what() +
                             "\r\nPlease make room or mend the folder, then reject and repeat the drop.",
                         box::critical);
        return false;
    }
}

void frmBellmark_AccelDrop::PlotResponse() {
    const DropCurve curve = optAcceleration.IsChosen() ? DropCurve::Acceleration
                            : optVelocity.IsChosen()   ? DropCurve::Velocity
                            : optStdDev.IsChosen()     ? DropCurve::StdDev
                                                       : DropCurve::Deflection;
    if (instrument_) picDropResponse.Draw(instrument_->PlotOf(curve, chkZoom.Value));
}

void frmBellmark_AccelDrop::chkZoom_Click() {
    chkZoom.Caption = chkZoom.Value ? "&Zoomed In" : "Un&zoomed";
    PlotResponse();
}

void frmBellmark_AccelDrop::PollButton(bool poll) {
    if (poll && !program_.Run.ReviewMode) {
        BeginHandButton(program_);
        TimerDrop.Start();
    } else {
        TimerDrop.Stop();
    }
}

void frmBellmark_AccelDrop::TimerDrop_Tick() {
    if (Stack().Front() != this || !HandButtonWasReleased(program_, TimerDrop)) return;
    if (fraMessage.Visible) {
        cmdErrOK_Click();
    } else if (cmdAccept.Enabled) {
        cmdAccept_Click();
    }
}

void frmBellmark_AccelDrop::Activated() {
    if (TimerDrop.IsRunning()) BeginHandButton(program_);
}

void frmBellmark_AccelDrop::cmdErrOK_Click() {
    fraMessage.Visible = false;
    program_.Run.ErrorPanelOpen = false;
    AllowAnswers();
}

void frmBellmark_AccelDrop::cmdAccept_Click() {
    CalibrationRun& run = program_.Run;
    TrialInHand& trial = run.Trial;
    PollButton(false);
    run.ButtonDown = false;
    run.DropRejected = false;
    const bool wasReplay = trial.ReplayMode();
    const bool backToFWDData = trial.TrialReview();
    if (!wasReplay) {
        Note("accepted");
        const DropRecord& drop = program_.Drop;
        TakePeak(trial, trial.shape.englishUnits ? drop.PeakEnglish : drop.PeakMetric, {drop.ExcessNoise, outOfRange_});
        program_.Drop.ExcessNoise = false;
    }
    LeaveReview();
    Hide();
    if (backToFWDData) {
        program_.The<FWDDataDoor>().Refresh();
        return;
    }
    auto& collection = program_.The<CollectionDoor>();
    if (!wasReplay) collection.GetResults();
    collection.PollButton(true);
    // From the first drop on the run's file tells that drops are in hand: a restart loses them.
    if (!wasReplay && trial.DropSequenceIndex == 1 && run.InterimCalOpen) SaveInterimCalibration(program_);
}

void frmBellmark_AccelDrop::cmdReject_Click() {
    program_.Compose(120);
    if (program_.ShowComposed() == Answer::Yes) RejectDrop();
}

void frmBellmark_AccelDrop::RejectDrop() {
    CalibrationRun& run = program_.Run;
    if (!run.Trial.ReplayMode()) Note("rejected");
    ClearDropResults();
    run.DropRejected = true;
    program_.Drop.ExcessNoise = false;
    PollButton(false);
    run.ButtonDown = false;
    Hide();
    if (run.ReviewMode) return;
    run.AcquisitionActive = false;
    program_.The<AcquisitionDoor>().AbortAcquisition();
    program_.The<CollectionDoor>().PollButton(true);
}

void frmBellmark_AccelDrop::LeaveReview() {
    EndReplay(program_);
    cmdAccept.Caption = "&Accept";
}

void frmBellmark_AccelDrop::Left() {
    // When the screen is left, the wait for a drop ends and is cleaned up, and the next capture is a live one again.
    if (program_.Run.AcquisitionActive) {
        program_.Run.DropAborted = true;
    } else if (program_.Run.Trial.ReplayMode()) {
        LeaveReview();
    }
}

void frmBellmark_AccelDrop::cmdMainMenu_Click() {
    CalibrationRun& run = program_.Run;
    const bool waiting = run.AcquisitionActive;
    ClearDropResults();
    LeaveReview();
    run.DropAborted = true;
    if (!run.ReviewMode) {
        program_.The<AcquisitionDoor>().AbortAcquisition();
        PollButton(false);
        run.ButtonDown = false;
    }
    if (!waiting) Hide();
    program_.The<MainMenuDoor>().Open();
}

}  // namespace bellmark
