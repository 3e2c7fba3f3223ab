#include "reference/frm_bellmark_accel_drop.h"

#include <algorithm>
#include <stdexcept>

#include "app/ctrl_ht_drop_array.h"
#include "app/program.h"
#include "app/replay.h"
#include "platform/dialogs.h"
#include "platform/format.h"
#include "platform/numbers.h"
#include "reference/drop_file.h"
#include "reference/drop_plot.h"
#include "reference/hand_button.h"

namespace bellmark {

namespace {
constexpr Color armed = colors::complete;
constexpr Color captured = colors::warning;
constexpr int blanksBeforeDate = 26;
}  // namespace

frmBellmark_AccelDrop::frmBellmark_AccelDrop(Program& program)
    : Screen(program.Screens, "frmBellmark_AccelDrop", "Drop"), Header(*this, program.Header), program_(program) {
    for (OptionButton* option : {&optAcceleration, &optVelocity, &optDeflection})
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

void frmBellmark_AccelDrop::PrepareDrop() {
    CalibrationRun& run = program_.Run;
    run.CurrentHeightIndex = HeightOfDrop(run.DropSequenceIndex, run.NumberDropsPerLoadLevel) + 1;
    run.CurrentDropIndex = DropInHeight(run.DropSequenceIndex, run.NumberDropsPerLoadLevel) + 1;
    lblHeightDrop.Caption =
        "Height: " + NumberText(run.CurrentHeightIndex) + "  Drop: " + NumberText(run.CurrentDropIndex);
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
    Show();
    // A stray Enter must not leave the wait for the drop.
    SetDefaultButton(nullptr);
    SetFocus(picDropResponse);
}

void frmBellmark_AccelDrop::ShowDrop() {
    CalibrationRun& run = program_.Run;
    PrepareDrop();
    // The accelerometer's drops take their way from here once their analysis is part of the program.
    if (run.CurrentProcedure != 5) throw std::logic_error("Deflection sensor drops cannot be measured yet.");
    const LoadDropFindings findings = AnalyzeLoadDrop();
    if (run.DropAborted) {
        LeaveReplay();
        RejectDrop();
        return;
    }
    acceptable_ = !findings.noPulse;
    ShowLoadResults(findings);
    chkZoom.Value = true;
    chkZoom.Caption = "&Zoomed In";
    optDeflection.Choose();
    PlotResponse();
    lblFilename.Visible = true;
    AllowAnswers();
    run.ButtonDown = false;
    PollButton(true);
    if (!run.ReplayMode && !WriteDropFile()) {
        acceptable_ = false;
        cmdAccept.Enabled = false;
    }
    if (findings.peakTooHigh) {
        const double peak = program_.Drop.MaxAbsAccel;
        program_.Compose(303, {peak});
        program_.ShowComposed(box::critical + box::helpButton);
    }
    run.LastMessageCode = 0;
}

bool frmBellmark_AccelDrop::CaptureLoad() {
    CalibrationRun& run = program_.Run;
    auto& acquisition = program_.The<AcquisitionDoor>();
    if (run.ReviewMode || run.ReplayMode) {
        program_.The<SimulatorDoor>().SetFile("LoadCell" + NumberText(run.LoadCellRefTrials + 1));
    }
    acquisition.ShowDAQ(true);
    SetState("Ready: drop now", armed);
    acquisition.CaptureBlock(run.LoadCellChannel);
    waiting_ = true;
    while (!acquisition.BlockCaptured() && !run.DropAborted) program_.Services.yield();
    waiting_ = false;
    if (run.DropAborted) {
        acquisition.AbortAcquisition();
        return false;
    }
    SetState("Captured: accept or reject", captured);
    acquisition.GetResultsVolts(program_.Drop.RawVolts, program_.Drop.NumSamples);
    return true;
}

LoadDropFindings frmBellmark_AccelDrop::AnalyzeLoadDrop() {
    program_.Run.DropAborted = false;
    if (!CaptureLoad()) return {};
    const LoadDropFindings findings = AnalyzeLoadSamples(program_.Drop, program_.Center, program_.Run.EnglishUnits);
    ShowNoiseVerdict(findings);
    return findings;
}

void frmBellmark_AccelDrop::ShowNoiseVerdict(const LoadDropFindings& findings) {
    const bool excess = program_.Drop.ExcessNoise;
    lblNoise.Visible = excess;
    const Color color = excess ? colors::mustBeUpdated : colors::buttonFace;
    lblZeroCalc0.BackColor = color;
    lblZeroCalc1.BackColor = color;
    if (!excess) return;
    program_.Compose(103, {findings.noise});
    OpenPanel();
}

void frmBellmark_AccelDrop::OpenPanel() {
    lblMessageTitle.Caption = program_.Run.MessageTitle;
    lblMessageText.Caption = program_.Run.MessageText;
    DisableButtons();
    fraMessage.Visible = true;
    program_.Run.ErrorPanelOpen = true;
}

void frmBellmark_AccelDrop::ShowLoadResults(const LoadDropFindings& findings) {
    const DropRecord& drop = program_.Drop;
    lblPeakCaption.Caption = "Peak Load";
    lblZeroCaption.Caption = "Load at Start of Pulse";
    lblMilsUnit.Caption = "(pound-force)";
    lblMicronsUnit.Caption = "(kilo-Newtons)";
    optAcceleration.Caption = "&Voltage";
    optVelocity.Caption = "&Offset";
    optDeflection.Caption = "&Force";
    lblPeakMicrons.Caption = Format(drop.PeakMetric, "#0.00");
    lblPeakMils.Caption = Format(drop.PeakEnglish, "#,000");
    lblRiseTime.Caption = Format(drop.RiseTime, "#0.0");
    lblZeroCalc0.Caption = Format(findings.loadAtStart, "#0.0");
    lblZeroCalc1.Caption = Format(findings.loadAtStart * kilonewtonsPerPound, "#0.000");
    if (findings.noPulse) {
        lblState.Caption = "No pulse found: reject this drop";
    } else if (findings.belowTrigger) {
        lblState.Caption = "Below the trigger level: check this drop";
    }
}

void frmBellmark_AccelDrop::AllowAnswers() {
    if (program_.Run.ErrorPanelOpen) {
        SetDefaultButton(&cmdErrOK);
        SetFocus(cmdErrOK);
        return;
    }
    // A drop without a pulse, or without its file, has no peak that could be accepted; one that is only looked at can
    // always be left.
    cmdAccept.Enabled = acceptable_ || program_.Run.ReplayMode;
    cmdReject.Enabled = !program_.Run.ReplayMode;
    chkZoom.Visible = true;
    Frame1.Visible = true;
    SetDefaultButton(&cmdAccept);
    SetFocus(cmdAccept.Enabled ? cmdAccept : cmdMainMenu);
}

bool frmBellmark_AccelDrop::WriteDropFile() {
    const CalibrationRun& run = program_.Run;
    FileSystem& files = program_.Services.files;
    try {
        files.CreateFolder(program_.InterimFolder());
        ReplaceTextFile(files, program_.InterimFolder() / PathFromText(LoadDropFileName(run)),
                        LoadDropFileText(program_.Drop, run, program_.Center, program_.Now()));
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
    const LoadCurve curve = optAcceleration.IsChosen() ? LoadCurve::Voltage
                            : optVelocity.IsChosen()   ? LoadCurve::Offset
                                                       : LoadCurve::Force;
    picDropResponse.Draw(LoadDropPlot(program_.Drop, curve, chkZoom.Value, program_.Run.EnglishUnits));
}

void frmBellmark_AccelDrop::chkZoom_Click() {
    chkZoom.Caption = chkZoom.Value ? "&Zoomed In" : "&Zoomed Out";
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
    if (Stack().Front() != this || !HandButtonWasReleased(program_)) return;
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
    PollButton(false);
    run.ButtonDown = false;
    run.DropRejected = false;
    if (!run.ReplayMode && run.DropSequenceIndex < static_cast<int>(maxDrops)) {
        const auto slot = static_cast<std::size_t>(run.DropSequenceIndex);
        run.DropResults[slot] = run.EnglishUnits ? program_.Drop.PeakEnglish : program_.Drop.PeakMetric;
        run.DropNoiseFlags[slot] = program_.Drop.ExcessNoise;
        program_.Drop.ExcessNoise = false;
    }
    cmdAccept.Caption = "&Accept";
    Hide();
    if (run.TrialReview) {
        EndReplay(program_);
        run.TrialReview = false;
        program_.The<FWDDataDoor>().Refresh();
        return;
    }
    auto& collection = program_.The<CollectionDoor>();
    collection.GetResults();
    collection.PollButton(true);
}

void frmBellmark_AccelDrop::cmdReject_Click() {
    program_.Compose(120);
    if (program_.ShowComposed() == Answer::Yes) RejectDrop();
}

void frmBellmark_AccelDrop::RejectDrop() {
    CalibrationRun& run = program_.Run;
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

void frmBellmark_AccelDrop::LeaveReplay() {
    EndReplay(program_);
    cmdAccept.Caption = "&Accept";
}

void frmBellmark_AccelDrop::cmdMainMenu_Click() {
    ClearDropResults();
    LeaveReplay();
    program_.Run.DropAborted = true;
    if (!program_.Run.ReviewMode) {
        program_.The<AcquisitionDoor>().AbortAcquisition();
        PollButton(false);
        program_.Run.ButtonDown = false;
    }
    if (!waiting_) Hide();
    program_.The<MainMenuDoor>().Open();
}

void frmBellmark_AccelDrop::CloseRequested() {
    program_.Run.DropAborted = true;
    // A wait that is on ends by itself and cleans up; a drop that is only shown is left as a rejected one.
    if (waiting_) return;
    LeaveReplay();
    RejectDrop();
}

}  // namespace bellmark
