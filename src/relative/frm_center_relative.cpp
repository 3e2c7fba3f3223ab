#include "relative/frm_center_relative.h"

#include <algorithm>

#include "app/analysis_warning.h"
#include "app/interim_store.h"
#include "app/journal.h"
#include "app/program.h"
#include "app/variance_grid.h"
#include "app/workflow.h"
#include "fwd/fwd_files.h"
#include "fwd/fwd_intake.h"
#include "pddx/mod_pddx_read.h"
#include "platform/dialogs.h"
#include "platform/format.h"
#include "platform/numbers.h"
#include "platform/printed_pages.h"
#include "platform/text.h"
#include "relative/relative_analysis.h"
#include "relative/relative_boxes.h"
#include "relative/relative_readings.h"
#include "relative/relative_report.h"
#include "relative/relative_trial.h"

namespace bellmark {

namespace {

constexpr int headingRows = 2;
constexpr int positionColumn = 2;
constexpr const char* gainPicture = "0.0000";
constexpr const char* deflectionPicture = "#0.00";

}  // namespace

frmCenterRelative::frmCenterRelative(Program& program)
    : Screen(program.Screens, "frmCenterRelative", "FWD Annual Relative Calibration"),
      Header(*this, program.Header),
      program_(program),
      run_(program.Run) {
    for (TextBox* box : {&txtRecFileName, &txtFilename, &txtStandardError[0], &txtStandardError[1]}) box->Locked = true;
    Header.PageTitle.Caption = Title();
    cmdBrowse.Click = [this] { cmdBrowse_Click(); };
    cmdPlot.Click = [this] { program_.The<CenterRelPlotDoor>().DrawRelativePlot(); };
    cmdReject.Click = [this] { cmdReject_Click(); };
    cmdPrint.Click = [this] { cmdPrint_Click(); };
    Command1.Click = [this] { program_.Services.printScreen(Name()); };
    cmdMainMenu.Click = [this] { program_.The<MainMenuDoor>().Open(); };
    chkANOVA.Click = [this] { chkANOVA_Click(); };
    grdSensors.CellEdit = [this](int row, int column, const std::string& text) {
        grdSensors_CellEdit(row, column, text);
    };
}

/// Index of the trial in hand.
std::size_t frmCenterRelative::Trial() const {
    return static_cast<std::size_t>(run_.RelTrials);
}

// ---- entries

void frmCenterRelative::Start() {
    // A trial that was read is still neither accepted nor rejected.
    if (run_.RelTrialInHand) return ReturnFromPlot();
    if (run_.RelTrials >= 2) TellTrialsDone();
    const bool pairsAreComplete = run_.RelTrials >= 2 && run_.RelTrials % 2 == 0;
    if (pairsAreComplete || run_.SensorRelCalComplete) {
        program_.The<ResultsDoor>().Open();
    } else {
        SetUpForm();
    }
}

void frmCenterRelative::TellTrialsDone() {
    std::string text = NumberText(run_.RelTrials) + " relative calibration trials have been completed so far.\r\n";
    text += run_.RelTrials == 2 ? "Only 2 acceptable Relative Trials are needed.\r\n"
                                  "Please review the Relative Calibration Results.\r\n"
                                  "Press OK to go to the Results screen."
                                : "Please review the Relative Calibration Results";
    program_.ShowBox(text, box::information);
}

void frmCenterRelative::BeginTrial() {
    if (run_.RelTrialInHand) return ReturnFromPlot();
    if (!HasRoomForRelativeTrial(run_)) {
        program_.ShowBox(
            "All four relative trials are done.\r\nDelete trials in the results before another one is made.",
            box::information);
        return;
    }
    SetUpForm();
}

void frmCenterRelative::SetUpForm() {
    run_.CurrentProcedure = Procedure::Sensors;
    run_.CurrentProcStep = step::sensorsRelative;
    BeginRelativeTrial(run_);
    SaveInterimCalibration(program_);
    ShowForm(Stage::Browse);
}

void frmCenterRelative::ReturnFromPlot() {
    run_.CurrentProcedure = Procedure::Sensors;
    run_.CurrentProcStep = step::sensorsRelative;
    ShowForm(Stage::Look);
    ShowRelativeResults();
}

void frmCenterRelative::AcceptRelativeTrial() {
    CountRelativeTrial(run_);
    AddToJournal(program_, "Relative trial " + NumberText(run_.RelTrials) + " accepted");
    run_.CurrentProcStep = step::sensorsRelative;
    SaveInterimCalibration(program_);
    if (run_.RelTrials % 2 == 1) {
        SetUpForm();
    } else {
        program_.The<MainMenuDoor>().Open();
    }
}

// ---- what is shown

void frmCenterRelative::ShowForm(Stage stage) {
    program_.Header.SetProcedureName(ProcedureTitle(Procedure::Sensors));
    const std::string number = NumberText(run_.RelTrials + 1);
    lblTrial.Caption = "Trial " + number;
    txtRecFileName.Text = "Relative" + number;
    txtFilename.Text = run_.RelTrialInHand ? run_.RelTrialInHand->rawFileName : std::string();
    Show();
    ShowStage(stage);
}

void frmCenterRelative::ShowStage(Stage stage) {
    const bool isRead = stage == Stage::Look;
    SetEnabled({&cmdPlot, &cmdReject, &cmdPrint}, isRead);
    SetVisible({&grdSensors, &grdSets, &fraStdError, &chkANOVA}, isRead);
    fraANOVA.Visible = isRead && chkANOVA.Value;
    Button& next = isRead ? cmdPlot : cmdBrowse;
    for (Button* button : {&cmdBrowse, &cmdPlot}) {
        button->BackColor = button == &next ? colors::suggestedNext : colors::buttonFace;
    }
    lblNextStep.Caption = Prompt(stage);
    SetDefaultButton(&next);
    SetFocus(next);
}

std::string frmCenterRelative::Prompt(Stage stage) const {
    if (stage == Stage::Look) return "Check the stand positions, then look at all drops: PLOT.";
    const char* stand = run_.RelTrials % 2 == 0 ? "Put the sensors into the stand in their order, make the drops"
                                                : "Turn the order of the sensors in the stand round, make the drops";
    return std::string(stand) + ", and choose the file that the FWD wrote: BROWSE.";
}

void frmCenterRelative::chkANOVA_Click() {
    const bool shows = chkANOVA.Value;
    fraANOVA.Visible = shows;
    chkANOVA.Caption = shows ? "Close &ANOVA" : "Show &ANOVA";
}

void frmCenterRelative::ShowRelativeResults() {
    SetUpGrids();
    ShowSensors();
    ShowSets();
    ShowStandardError();
}

void frmCenterRelative::SetUpGrids() {
    const char* units = run_.EnglishUnits ? "(mils)" : "(microns)";
    grdSensors.SetHeadings({"Sensor     ", "Serial   ", "   Stand   ", " Average Def. ", " Std.Dev. ", "  Initial   ",
                            "   Interim  ", "  Means  ", " Rel. Trial "});
    grdSensors.AddRow({"No.", "Number", "Position", units, units, "  Gain  ", "  Gain  ", " Ratio ", "  Gain  "});
    grdSets.SetHeadings({" Set ", "  Average   ", " Std.Dev. "});
}

void frmCenterRelative::ShowSensors() {
    const int sensors = static_cast<int>(SensorCount(run_));
    for (int s = 0; s < sensors; ++s) {
        const auto index = static_cast<std::size_t>(s);
        const SensorCalRecord& sensor = run_.Sensor.at(index);
        const RelativeTrialRecord& trial = sensor.RelTrial.at(Trial());
        grdSensors.AddRow({NumberText(ShownSensorNumber(run_, s)), sensor.SerialNumber, "",
                           Format(trial.Average, deflectionPicture), Format(trial.StdDev, deflectionPicture),
                           Format(sensor.InitialGain, gainPicture), Format(sensor.InterimGain, gainPicture),
                           Format(trial.AdjFactor, gainPicture), Format(trial.Gain, gainPicture)});
        grdSensors.SetEditable(headingRows + s, positionColumn, true);
    }
    for (int s = 0; s < sensors; ++s) ShowPosition(static_cast<std::size_t>(s));
}

void frmCenterRelative::ShowPosition(std::size_t sensor) {
    const int row = headingRows + static_cast<int>(sensor);
    const int position = run_.Sensor.at(sensor).RelTrial.at(Trial()).Position;
    const bool isDoubtful = IsPositionDoubtful(run_, sensor);
    grdSensors.SetCell(row, positionColumn, position == 0 ? std::string() : NumberText(position));
    grdSensors.SetCellColor(row, positionColumn, isDoubtful ? colors::warning : colors::window);
    grdSensors.SetCellToolTip(row, positionColumn,
                              !isDoubtful     ? "Type the place of this sensor in the stand."
                              : position == 0 ? "The stand position is empty."
                                              : "This stand position is given to another sensor, too.");
}

void frmCenterRelative::grdSensors_CellEdit(int row, int column, const std::string& text) {
    const auto sensor = static_cast<std::size_t>(row - headingRows);
    if (column != positionColumn || !run_.RelTrialInHand) return;
    const auto number = NumberIn(text);
    const bool isEmpty = Trim(text).empty();
    const int highest = static_cast<int>(maxSensors);
    const bool isPlace = number && *number >= 1 && *number <= highest && *number == Round(*number, 0);
    if (!isEmpty && !isPlace) {
        program_.ShowBox("A stand position is a whole number from 1 to " + NumberText(highest) + '.', box::exclamation);
        return;
    }
    run_.Sensor.at(sensor).RelTrial.at(Trial()).Position = isEmpty ? 0 : static_cast<int>(*number);
    // A position may have become unique.
    for (int s = 0; s + headingRows < grdSensors.Rows(); ++s) ShowPosition(static_cast<std::size_t>(s));
}

void frmCenterRelative::ShowSets() {
    const RelativeTrialSummary& trial = run_.RelTrial.at(Trial());
    for (std::size_t set = 0; set < relativeSets; ++set) {
        grdSets.AddRow({NumberText(set + 1), Format(trial.SetAvg[set], deflectionPicture),
                        Format(trial.SetStdDev[set], deflectionPicture)});
    }
    grdSets.AddRow({"All", Format(trial.Avg, deflectionPicture), Format(trial.StdDev, deflectionPicture)});
}

void frmCenterRelative::ShowStandardError() {
    const VarianceTable table = RelativeTrialTable(run_.RelTrial.at(Trial()), run_.NumberSensors, WarnInBox(program_));
    const StandardErrorInUnits error = InBothUnits(table.standardError, run_.EnglishUnits);
    const Color color = error.isTooLarge ? colors::mustBeUpdated : colors::complete;
    ShowStandardErrorBoxes(txtStandardError, UnitLabel, error, run_.EnglishUnits, color);
    if (error.isTooLarge)
        lblNextStep.Caption = "The standard error is above 3 microns: PLOT shows why; REJECT the trial.";
    ShowVarianceTable(
        grdANOVA, table,
        {{"             ", " Sum of Squares ", " Degree of Freedom   ", "    MSE    ", "      F    ", "    P       "},
         "Std Error",
         color});
}

// ---- the FWD's file

void frmCenterRelative::cmdBrowse_Click() {
    const auto file = AskForFWDFile(program_, {"Read Relative Drop Data", DropDataFilter(run_.Manufacturer)});
    if (!file || file->told) return;
    PDDXFile document;
    if (!ReadPDDXFile(program_.Services.files, DocumentOf(*file), document, false).readable) {
        program_.Compose(106);
        program_.ShowComposed();
    } else if (MayUseDocument(program_, document)) {
        TakeDocument(document, *file);
    }
}

/// An existing document that the operator did not replace is read as it is.
Path frmCenterRelative::DocumentOf(const FWDFile& file) const {
    if (file.isReady) return file.document;
    return program_.InterimFolder() / PathFromText(PathText(file.chosen.stem()) + "cvt.ddx");
}

void frmCenterRelative::TakeDocument(const PDDXFile& document, const FWDFile& file) {
    const long long drops = ReadRelativeTrial(document, run_, PathText(file.chosen.filename()));
    if (drops != relativeDrops) TellDropCount(drops);
    // A file without drops leaves the trial unchanged.
    if (drops == 0) return;
    DoRelativeDataAnalysis(run_);
    ShowForm(Stage::Look);
    ShowRelativeResults();
    TellAboutFile(program_);
    const auto sensors = SensorsWithoutResult(run_);
    if (!sensors.empty()) program_.ShowBox(ListedLines(sensors) + "Please check the data file.", box::exclamation);
}

void frmCenterRelative::TellDropCount(long long drops) {
    program_.ShowBox(
        "The number of drop data points should be " + NumberText(relativeDrops) + ", but is " + NumberText(drops) + '.',
        box::exclamation);
}

void frmCenterRelative::cmdPrint_Click() {
    const DateTime now = program_.Now();
    const std::string name = RelativeReportName(run_, Trial(), now);
    const std::string text =
        PrintReportRel(run_, program_.Center, Trial(), {name, txtFilename.Text, now}, WarnInBox(program_));
    program_.Services.printer.Print(name, PrinterPages(text));
}

void frmCenterRelative::cmdReject_Click() {
    const Answer repeat = AskToRepeatTrial(program_, "relative calibration");
    if (repeat == Answer::Cancel) return;
    SetUpForm();
    if (repeat == Answer::No) program_.The<MainMenuDoor>().Open();
}

}  // namespace bellmark
