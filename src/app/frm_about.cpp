#include "app/frm_about.h"

#include <algorithm>

#include "app/app_main.h"
#include "app/monthly_run.h"
#include "app/program.h"
#include "platform/dialogs.h"
#include "platform/profile_strings.h"
#include "run/paths.h"
#include "run/version.h"

namespace bellmark {

namespace {
constexpr const char* continueTitle = "Continue an Interim Calibration";
constexpr int cannotReadInterim = 304;
constexpr int noRow = -1;

std::string QuestionAbout(const InterimCalibration& interim) {
    return "Are you sure you want to use the following interim calibration?\r\n" + interim.fileName +
           "\r\nDate: " + interim.endDate + "\r\nFWD Owner: " + interim.owner +
           "\r\nFWD Serial Number: " + interim.serialNumber;
}
}  // namespace

frmAbout::frmAbout(Program& program)
    : Screen(program.Screens, "frmAbout", "Bellmark"), Header(*this, program.Header), program_(program) {
    lblVersion.Caption = VersionText();
    lblReviewMode.Visible = false;
    cmdRelativeCal.Enabled = program_.Has<RelativeDoor>();
    cmdCloseAbout.Visible = false;
    cmdCloseAbout.Click = [this] {
        if (backToStart_) return ShowStart();
        Hide();
    };
    cmdStartNewCal.Click = [this] { cmdStartNewCal_Click(); };
    cmdRelativeCal.Click = [this] {
        if (BeginMonthlyRun(program_)) program_.The<RelativeDoor>().Start();
    };
    cmdReadCalCenterA.Click = [this] { cmdReadCalCenterA_Click(); };
    cmdOpenInterimCal.Click = [this] { cmdOpenInterimCal_Click(); };
    cmdDeleteInterim.Click = [this] { cmdDeleteInterim_Click(); };
    grdInterim.CellClick = [this](int row, int) { grdInterim_Click(row); };
    grdInterim.CellDoubleClick = [this](int row, int) {
        grdInterim_Click(row);
        if (cmdOpenInterimCal.Enabled) cmdOpenInterimCal_Click();
    };
    tmrShowTime.Tick = [this] { tmrShowTime.Stop(); };
    ListInterimCalibrations();
}

void frmAbout::ShowStart() {
    fraStart.Visible = true;
    cmdCloseAbout.Visible = false;
    ListInterimCalibrations();
    Show();
    SuggestStart();
}

/// A run that was left is continued rather than begun anew.
void frmAbout::SuggestStart() {
    Button& next = grdInterim.SelectedRow == noRow ? cmdStartNewCal : cmdOpenInterimCal;
    SetDefaultButton(&next);
    SetFocus(next);
}

void frmAbout::ShowAbout() {
    if (fraStart.Visible) backToStart_ = Stack().Front() == this;
    fraStart.Visible = false;
    fraInterimCals.Visible = false;
    cmdCloseAbout.Visible = true;
    SetDefaultButton(&cmdCloseAbout);
    SetFocus(cmdCloseAbout);
    tmrShowTime.Start();
    Show();
}

void frmAbout::EnableInterimButtons() {
    const bool isMarked = grdInterim.SelectedRow != noRow;
    for (Button* button : {&cmdOpenInterimCal, &cmdDeleteInterim}) {
        button->Enabled = isMarked;
        button->ToolTip = isMarked ? "" : "Choose a calibration in the list first.";
    }
}

void frmAbout::AnnounceReviewMode() {
    lblReviewMode.Visible = true;
    cmdStartNewCal.Caption = "Start Cal. &Review";
}

void frmAbout::ListInterimCalibrations() {
    const auto interims = InterimCalibrations(program_.Services.files, program_.Folder());
    const bool any = std::any_of(interims.begin(), interims.end(), [](const InterimCalibration& interim) {
        return interim.fromCopy || MatchesPattern(interim.fileName, interimPattern);
    });
    program_.Run.InterimCalOpen = any;
    fraInterimCals.Visible = any;
    cmdReadCalCenterA.Enabled = !any;
    cmdReadCalCenterA.ToolTip = any ? "No interim calibrations must be deleted or completed to enable this button."
                                    : "Used to read in a new center calibration configuration file.";
    grdInterim.SetHeadings({"Interim File Name         ", "       Date       ", "  FWD Owner  ",
                            "  FWD Serial Number   ", "Trials", "Last Change"});
    for (const InterimCalibration& interim : interims) {
        grdInterim.AddRow({interim.fileName, interim.endDate, interim.owner, interim.serialNumber, interim.trials,
                           interim.lastChange});
    }
    MarkRow(RowToMark());
}

/// The run that was in hand, or the only one.
int frmAbout::RowToMark() const {
    for (int row = grdInterim.FixedRows(); row < grdInterim.Rows(); ++row) {
        const bool isOnly = grdInterim.Rows() == grdInterim.FixedRows() + 1;
        if (isOnly || grdInterim.Cell(row, 0) == program_.Run.InterimFileName) return row;
    }
    return noRow;
}

void frmAbout::MarkRow(int row) {
    grdInterim.SelectedRow = row;
    EnableInterimButtons();
}

void frmAbout::grdInterim_Click(int row) {
    if (row < grdInterim.FixedRows()) return;
    // Marking a row does not change the run in hand.
    MarkRow(row);
    SetDefaultButton(&cmdOpenInterimCal);
}

std::optional<InterimCalibration> frmAbout::MarkedInterim() {
    if (grdInterim.SelectedRow < 0) {
        SetFocus(grdInterim);
        return {};
    }
    return ReadInterim(program_.Services.files, program_.Folder(), grdInterim.Cell(grdInterim.SelectedRow, 0));
}

void frmAbout::TakeName(const InterimCalibration& interim) {
    program_.Run.InterimFileName = interim.fileName;
    program_.Run.InterimFolderName = InterimFolderOf(interim.fileName);
    program_.Run.StoreIsOfThisSitting = false;
}

bool frmAbout::OffersCopy(const InterimCalibration& interim) {
    const std::string question = "The file " + interim.fileName +
                                 " is missing or damaged, but the copy in its data folder is whole. It was saved on " +
                                 interim.endDate + ".\r\nDo you want to put the copy in its place?";
    const int style = box::yesNo + box::exclamation;
    if (program_.ShowBox(question, style, continueTitle) != Answer::Yes) return false;
    RestoreInterimFromCopy(program_.Services.files, program_.Folder(), interim.fileName);
    return true;
}

void frmAbout::cmdOpenInterimCal_Click() {
    CalibrationRun& run = program_.Run;
    auto interim = MarkedInterim();
    if (!interim || interim->endDate.empty() || !run.InterimCalOpen) return;
    if (interim->fromCopy && !OffersCopy(*interim)) {
        // The operator may still need what is left of the file itself.
        if (interim->fileEndDate.empty()) return;
        interim->endDate = interim->fileEndDate;
    }
    const int style = box::yesNo + box::question + box::secondIsDefault;
    if (program_.ShowBox(QuestionAbout(*interim), style, continueTitle) != Answer::Yes) return;
    TakeName(*interim);
    if (!OpenInterimCalibration(program_)) return;
    run.ReviewFromInterim = run.ReviewMode;
    run.NewCalibration = false;
    if (!LoadInterimCalibration(program_)) return ShowStart();
    // The files were checked and the center was read above; doing so again would replace the loaded run's units and
    // notes by those of the center.
    if (run.LastMessageCode != cannotReadInterim) EnterLoadedRun(program_);
}

void frmAbout::cmdDeleteInterim_Click() {
    const auto interim = MarkedInterim();
    if (!interim) return;
    // The box asks the same question as opening does; only title and icon differ.
    const int style = box::yesNo + box::exclamation + box::secondIsDefault;
    if (program_.ShowBox(QuestionAbout(*interim), style, continueTitle) != Answer::Yes) return;
    TakeName(*interim);
    CalibrationRun& run = program_.Run;
    run.LoadCellRefTrials = 0;
    run.RefTrials = 0;
    run.RelTrials = 0;
    run.InterimCalOpen = false;
    // The list below still shows what could not be deleted.
    RemoveInterimCalibration(program_);
    NameInterimStore(program_);
    ListInterimCalibrations();
}

void frmAbout::cmdStartNewCal_Click() {
    if (!program_.Run.ReviewMode) {
        StartNewCalibration(program_);
        return;
    }
    program_.Compose(100);
    if (program_.ShowComposed() == Answer::Cancel) return;
    LeaveInterimStore(program_);
    // Nothing begins until a file is chosen.
    if (program_.The<SetupDoor>().ReadCalCenter()) return program_.The<SetupDoor>().Open();
    LeaveInterimStore(program_);
    program_.Run.IsInHand = false;
    ShowStart();
}

void frmAbout::cmdReadCalCenterA_Click() {
    program_.Compose(101);
    if (program_.ShowComposed() == Answer::Cancel) return;
    const auto chosen = program_.Services.dialogs.OpenFile({"", "FWD Cal. Center Files|*.ini", program_.Folder(), ""});
    if (!chosen) return;
    LeaveInterimStore(program_);
    auto& setup = program_.The<SetupDoor>();
    if (setup.ReadCalCenterFromFolderOf(*chosen)) setup.OpenCenterPage();
    ShowStart();
}

}  // namespace bellmark
