#include "fwd/frm_get_fwd_data.h"

#include <algorithm>
#include <cmath>

#include "analysis/limits.h"
#include "app/board_error.h"
#include "app/daily_calibration.h"
#include "app/interim_store.h"
#include "app/journal.h"
#include "app/program.h"
#include "app/replay.h"
#include "app/workflow.h"
#include "fwd/convert_fwd_file.h"
#include "fwd/fwd_files.h"
#include "fwd/fwd_intake.h"
#include "fwd/fwd_peaks.h"
#include "fwd/std_error_color.h"
#include "fwd/trial_report.h"
#include "pddx/mod_pddx_read.h"
#include "platform/dialogs.h"
#include "platform/format.h"
#include "platform/numbers.h"
#include "platform/text.h"
#include "run/paths.h"
#include "run/reference_trials.h"
#include "run/trial.h"

namespace bellmark {

namespace {

/// Nothing when the board cannot be read: an accepted trial gets its report without it.
std::optional<double> AirTemperature(Program& program) {
    try {
        return ReadTemperature(program);
    } catch (const BoardError& error) {
        program.Log(error.what());
        return {};
    }
}

constexpr const char* browsePrompt = "Choose the file that the FWD wrote during this trial: BROWSE.";
constexpr const char* graphPrompt = "Look at the plot of the trial: GRAPH.";
constexpr const char* acceptPrompt = "Accept the trial with NEXT, or reject it.";
constexpr const char* rejectPrompt = "This file cannot be used. Browse for another one, or reject the trial.";

}  // namespace

frmGetFWDData::frmGetFWDData(Program& program)
    : Screen(program.Screens, "frmGetFWDData", "FWD Data"),
      Header(*this, program.Header),
      DataDisplay(fraDataDisplay, program.Run, "DataDisplay_"),
      FWDData(fraFWDData, program.Run, "FWDData_"),
      program_(program),
      run_(program.Run) {
    for (TextBox* box : {&txtTrial, &txtFilename, &txtSensorNum, &txtNumSensors, &txtSerial, &txtInitialGain,
                         &txtAdjFactor, &txtStdError, &txtR2, &txtGain}) {
        box->Locked = true;
    }
    cmdBrowse.Click = [this] { cmdBrowse_Click(); };
    cmdFerrylink.Click = [this] { cmdFerrylink_Click(); };
    cmdUp.Click = [this] { cmdUp_Click(); };
    cmdDown.Click = [this] { cmdDown_Click(); };
    cmdGraph.Click = [this] { cmdGraph_Click(); };
    cmdAccept.Click = [this] { cmdAccept_Click(); };
    cmdReject.Click = [this] { RejectTrial(); };
    cmdMainMenu.Click = [this] { cmdMainMenu_Click(); };
    DataDisplay.CellClick = [this](int index) { ReviewDrop(index); };
}

void frmGetFWDData::Start() {
    const bool isRedone = run_.FlagUnacceptedTrial && ProcedureOfUnacceptedTrial(run_) == run_.CurrentProcedure;
    if (!isRedone && !AskForRoom(program_)) return;
    EndReplay(program_);
    if (isRedone) TakeUpCountedTrial(run_);
    PrepareScreen();
    txtTrial.Text = NumberText(TrialCount(run_) + 1);
    CountTrial(run_);
    DataDisplay.ShowResults();
    run_.CurrentProcStep = CalibratesSensors(run_) ? step::sensorsFileRead : step::loadCellFileRead;
    run_.FlagUnacceptedTrial = true;
    SaveInterimCalibration(program_);
    Show();
    ShowStage(Stage::Browse);
}

void frmGetFWDData::PrepareScreen() {
    const bool sensors = CalibratesSensors(run_);
    const TrialShape& shape = run_.Trial.shape;
    program_.Header.SetProcedureName(ProcedureTitle(run_.CurrentProcedure));
    Header.PageTitle.Caption = sensors ? "Get FWD Deflection Sensor Drop Data" : "Get FWD Load Cell Drop Data";
    run_.PlotReviewPending = true;
    run_.StdDevWarningDone = true;
    txtFilename.Text = "";
    document_.clear();
    fraDataDisplay.Caption =
        sensors ? "Integrated Accelerometer Deflection Peak Data" : "Reference Load Cell Peak Data";
    fraFWDData.Caption = sensors ? "FWD Deflection Sensor Peak Data" : "FWD Load Cell Peak Data";
    for (ctrlHtDropArray* grid : {&DataDisplay, &FWDData}) {
        grid->CreateResultTable(shape.dropsPerHeight, shape.heights);
        grid->Clear();
    }
    ClearResults();
    ShowSensorNavigation(sensors);
}

void frmGetFWDData::ClearResults() {
    for (TextBox* box :
         {&txtSensorNum, &txtNumSensors, &txtSerial, &txtInitialGain, &txtAdjFactor, &txtStdError, &txtR2, &txtGain}) {
        box->Text = "";
    }
    txtStdError.BackColor = colors::window;
    FWDData.Clear();
    device_ = 0;
}

void frmGetFWDData::ShowStage(Stage stage) {
    const bool loaded = stage == Stage::Look || stage == Stage::Answer;
    cmdGraph.Enabled = loaded;
    cmdAccept.Enabled = loaded;
    cmdReject.Enabled = stage != Stage::Browse;
    Button& next = stage == Stage::Look ? cmdGraph : stage == Stage::Answer ? cmdAccept : cmdBrowse;
    for (Button* button : {&cmdBrowse, &cmdGraph, &cmdAccept}) {
        button->BackColor = button == &next ? colors::suggestedNext : colors::buttonFace;
    }
    switch (stage) {
        case Stage::Browse:
            lblNextStep.Caption = browsePrompt;
            break;
        case Stage::Refused:
            lblNextStep.Caption = rejectPrompt;
            break;
        case Stage::Look:
            lblNextStep.Caption = graphPrompt;
            break;
        case Stage::Answer:
            lblNextStep.Caption = acceptPrompt;
            break;
    }
    SetDefaultButton(&next);
    SetFocus(next);
}

void frmGetFWDData::ShowSensorNavigation(bool visible) {
    SetVisible({&lblSensorNum, &txtSensorNum, &lblNumSensors, &txtNumSensors, &cmdUp, &cmdDown}, visible);
}

void frmGetFWDData::ReviewDrop(int index) {
    if (index >= run_.Trial.shape.Drops() || !AskToReview(program_, index)) return;
    BeginReplay(program_, index, true);
    program_.The<DropDoor>().StartReview();
}

void frmGetFWDData::cmdBrowse_Click() {
    run_.StdDevWarningDone = false;
    const auto file = AskForFWDFile(program_, {"FWD Drop Data", DropDataFilter(run_.Manufacturer)});
    if (!file) return;
    run_.PlotReviewPending = true;
    // Values of an earlier file must not be shown with the name of this one.
    ClearResults();
    txtFilename.Text = file->told ? std::string() : PathText(file->chosen.filename());
    ShowStage(TakeFile(*file) ? Stage::Look : Stage::Refused);
}

bool frmGetFWDData::TakeFile(const FWDFile& file) {
    if (file.told) return false;
    document_ = file.document;
    document_.replace_extension(".ddx");
    PDDXFile document;
    const bool readable = ReadPDDXFile(program_.Services.files, document_, document, false).readable;
    if (!MayUseDocument(program_, document) || !ReadFWDPeakData(document, readable)) return false;
    run_.GraphSeen = {};
    CompareDevices();
    CheckLoadCell();
    return true;
}

bool frmGetFWDData::ReadFWDPeakData(const PDDXFile& document, bool readable) {
    const FWDPeaks peaks = ReadFWDPeaks(document, run_);
    if (!readable || !peaks.hasLocations) ShowMessage(106);
    if (peaks.dropsInFile != run_.Trial.shape.Drops()) {
        program_.ShowBox("The number of drops (" + NumberText(run_.Trial.shape.Drops()) +
                             ") does not match the number of data points (" + NumberText(peaks.dropsInFile) +
                             ") in input file.",
                         box::exclamation);
        return false;
    }
    return CanBeUsed(peaks);
}

bool frmGetFWDData::CanBeUsed(const FWDPeaks& peaks) {
    if (!peaks.unreadable.empty()) {
        program_.ShowBox("These drops of the file have no peak that can be used:\r\n" + ListedLines(peaks.unreadable) +
                             "Please check the data file and its units, and try Browse again.",
                         box::exclamation);
        return false;
    }
    if (const int same = TrialWithSamePeaks(run_)) {
        const std::string question = "The peaks of this file are those of trial " + NumberText(same) +
                                     ", to the last digit.\r\nDo you want to use it all the same?";
        if (program_.ShowBox(question, box::yesNo + box::exclamation + box::secondIsDefault) != Answer::Yes)
            return false;
    }
    if (!peaks.withoutGain.empty()) {
        std::string question = "No gain will come of this file for these sensors:\r\n";
        for (const std::string& sensor : peaks.withoutGain) question += "     " + sensor + "\r\n";
        question += "Do you want to use it all the same?";
        if (program_.ShowBox(question, box::yesNo + box::exclamation + box::secondIsDefault) != Answer::Yes)
            return false;
    }
    if (!peaks.unitsAreKnown) {
        const std::string quantity = CalibratesSensors(run_) ? "deflections" : "loads";
        program_.ShowBox((peaks.unknownUnits.empty() ? "The file does not tell the unit of its " + quantity
                                                     : "The unit of the file's " + quantity + ", \"" +
                                                           peaks.unknownUnits + "\", is not known") +
                             ".\r\nIts values are taken as they stand. Check them carefully.",
                         box::exclamation);
    }
    return true;
}

void frmGetFWDData::CompareDevices() {
    const std::size_t devices = DevicesInTrial(run_);
    if (CalibratesSensors(run_)) {
        ShowSensorNavigation(true);
        txtNumSensors.Text = NumberText(run_.NumberSensors);
    }
    // From last to first, so that the first one stays on the screen.
    for (std::size_t device = devices; device-- > 0;) {
        ShowDevice(device, CalibrateDevice(run_, device));
        CheckScatter(device);
    }
}

void frmGetFWDData::ShowDevice(std::size_t device, const OriginRegression& fit) {
    const TrialRecord& trial = TrialOf(run_, device);
    const bool sensors = CalibratesSensors(run_);
    device_ = device;
    if (sensors) txtSensorNum.Text = NumberText(ShownSensorNumber(run_, static_cast<int>(device)));
    txtSerial.Text = SerialNumberOf(run_, device);
    txtInitialGain.Text = Format(InitialGainOf(run_, device), "0.000");
    txtAdjFactor.Text = Format(trial.AdjFactor, "0.0000");
    txtStdError.Text = Format(trial.StdErrAdjFactor, "0.0000");
    txtStdError.BackColor = StdErrorColor(trial.StdErrAdjFactor);
    txtR2.Text = Format(fit.r2, sensors ? "0.0000" : "0.000");
    txtGain.Text = Format(trial.Gain, "0.000");
    ShowFWDPeaks(device);
}

void frmGetFWDData::ShowFWDPeaks(std::size_t device) {
    const auto& peaks = TrialOf(run_, device).DropData;
    for (int drop = 0; drop < run_.Trial.shape.Drops(); ++drop) {
        FWDData.ShowResult(drop, peaks[static_cast<std::size_t>(drop)]);
    }
    FWDData.ShowStatistics(std::span(peaks).first(static_cast<std::size_t>(run_.Trial.shape.Drops())));
}

void frmGetFWDData::CheckScatter(std::size_t device) {
    if (run_.StdDevWarningDone) return;
    const TrialShape& shape = run_.Trial.shape;
    const auto heights = HeightStats(run_, device);
    const bool differs = std::any_of(heights.begin(), heights.begin() + shape.heights, [&](const auto& height) {
        return ScatterDiffers(height, CalibratesSensors(run_), shape.englishUnits);
    });
    if (!differs) return;
    run_.StdDevWarningDone = true;
    ShowMessage(214);
}

void frmGetFWDData::CheckLoadCell() {
    if (CalibratesSensors(run_)) return;
    const TrialRecord& trial = TrialOf(run_, 0);
    if (ExceedsLimit(0.98, trial.Gain) || ExceedsLimit(trial.Gain, 1.02)) ShowMessage(206);
    if (ExceedsLimit(std::abs(trial.StdErrAdjFactor), 0.002)) ShowMessage(212);
}

void frmGetFWDData::ShowMessage(int code) {
    program_.Compose(code);
    program_.ShowComposed();
}

void frmGetFWDData::StepSensor(int step) {
    const std::size_t next = NeighbourSensor(run_, device_, step);
    ShowDevice(next, RegressionOf(run_, next));
}

void frmGetFWDData::cmdGraph_Click() {
    program_.The<RegressionPlotDoor>().PlotGraph(document_, static_cast<int>(device_) + 1,
                                                 TrialOf(run_, device_).StdErrAdjFactor);
}

void frmGetFWDData::ReturnFromPlot() {
    Show();
    ShowStage(run_.PlotReviewPending ? Stage::Look : Stage::Answer);
}

void frmGetFWDData::cmdAccept_Click() {
    if (run_.PlotReviewPending) {
        cmdGraph_Click();
    } else {
        AcceptTrial();
    }
}

void frmGetFWDData::AcceptTrial() {
    run_.StdDevWarningDone = true;
    if (CalibratesSensors(run_)) {
        program_.The<ReferenceReviewDoor>().Start();
        SaveInterimCalibration(program_);
        return;
    }
    PrintReport();
    AddToJournal(program_, "Load cell trial " + NumberText(run_.LoadCellRefTrials) + " accepted");
    EndTrial();
    if (run_.LoadCellRefTrials == 1) {
        program_.The<MainMenuDoor>().CalibrateLoadCell();
    } else {
        program_.The<ResultsDoor>().OpenLoadCell();
    }
}

void frmGetFWDData::EndTrial() {
    LeaveTrial(run_);
    // What the trial had a part in goes with it.
    if (CalibratesSensors(run_)) JudgeReferenceTrials(run_, AcceptedReferenceTrials(run_));
    run_.CurrentProcStep = CalibratesSensors(run_) ? step::sensorsTrial : step::loadCellTrial;
    SaveInterimCalibration(program_);
}

void frmGetFWDData::RejectTrial() {
    constexpr const char* title = "Rejected Reference Calibration";
    const Answer repeat = program_.ShowBox(
        "Do you want to repeat the reference calibration trial?\r\n"
        "Clicking on YES or NO will cause the trial data to be lost!\r\n"
        "Only this trial's data will be lost.\r\n"
        "Clicking YES will start a new Reference Calibration.\r\n"
        "Clicking NO will take you to the Main Menu.",
        box::yesNoCancel + box::question, title);
    if (repeat == Answer::Cancel) return;
    const Answer sure = program_.ShowBox(
        "Are you sure you want to reject this trial?\r\nClicking on YES will cause the trial data to be lost!",
        box::yesNo + box::question + box::secondIsDefault, title);
    if (sure != Answer::Yes) return;
    AddToJournal(program_, "Reference trial " + NumberText(TrialCount(run_)) + " rejected");
    DropCountedTrial(run_);
    EndTrial();
    if (repeat == Answer::Yes) {
        ReturnToProcedure(program_, run_.CurrentProcedure);
    } else {
        program_.The<MainMenuDoor>().Open();
    }
}

void frmGetFWDData::cmdMainMenu_Click() {
    program_.The<MainMenuDoor>().Open();
}

void frmGetFWDData::cmdFerrylink_Click() {
    program_.Services.launcher.Start(ActualPath(program_.Services.files, program_.Folder() / converterName), "");
}

void frmGetFWDData::PrintReport() {
    const DateTime now = program_.Now();
    const std::optional<double> airTemperature = AirTemperature(program_);
    const Path folder = program_.InterimFolder();
    std::vector<std::string> names;
    std::vector<Path> paths;
    for (std::size_t device = 0; device < DevicesInTrial(run_); ++device) {
        names.push_back(TrialReportName(run_, device, now));
        paths.push_back(folder / PathFromText(names.back()));
    }
    FileSystem& files = program_.Services.files;
    const bool mayReplace = CheckReportsOverwrite(program_, paths);
    files.CreateFolder(folder);
    for (std::size_t device = 0; device < paths.size(); ++device) {
        if (!mayReplace && files.IsFile(paths[device])) continue;
        const TrialReportFacts facts{names[device], txtFilename.Text, now, airTemperature};
        ReplaceTextFile(files, paths[device], TrialReportText(run_, program_.Center, device, facts));
    }
}

}  // namespace bellmark
