#include "fwd/frm_ref_review.h"

#include <algorithm>
#include <cmath>

#include "analysis/limits.h"
#include "app/interim_store.h"
#include "app/journal.h"
#include "app/program.h"
#include "app/workflow.h"
#include "fwd/std_error_color.h"
#include "platform/format.h"
#include "platform/numbers.h"
#include "run/reference_trials.h"
#include "run/trial.h"

namespace bellmark {

namespace {

constexpr const char* gainPicture = "0.000";
constexpr const char* finePicture = "0.0000";
constexpr int fixedRows = 2;

}  // namespace

frmRefReview::frmRefReview(Program& program)
    : Screen(program.Screens, "frmRefReview", "Reference Trial Review"),
      Header(*this, program.Header),
      program_(program),
      run_(program.Run) {
    txtRefNotes.Locked = true;
    txtRMSorStdDev.Locked = true;
    txtRMSorStdDev.Visible = false;
    Label7.Visible = false;
    cmdAccept.Click = [this] { cmdAccept_Click(); };
    cmdReject.Click = [this] { cmdReject_Click(); };
    cmdBack.Click = [this] { cmdBack_Click(); };
    cmdMainMenu.Click = [this] { cmdMainMenu_Click(); };
    SetDefaultButton(&cmdAccept);
}

void frmRefReview::Start() {
    program_.Header.SetProcedureName(ProcedureTitle(run_.CurrentProcedure));
    Header.PageTitle.Caption = "Reference Deflection Trial " + NumberText(run_.RefTrials) + " - Review";
    cmdBack.Visible = true;
    ShowTrials();
    Show();
    SetFocus(cmdAccept);
}

/// After the trial is accepted there is no way back to its plot.
void frmRefReview::ResetRefCalGrid() {
    cmdBack.Visible = false;
    ShowTrials();
}

void frmRefReview::ShowTrials() {
    const ReferenceStatistics stats = CalcRefStats(run_, run_.RefTrials);
    if (run_.RefTrials > 0) RefCalcStats(run_, run_.RefTrials - 1, run_.RefTrials);
    verdict_ = JudgePair(stats);
    ShowHeadings();
    for (int sensor = 0; sensor < run_.NumberSensors; ++sensor) ShowSensor(sensor, stats);
    ShowSummaryRow();
    ShowVerdict();
    ShowStatistics(stats);
}

frmRefReview::Verdict frmRefReview::JudgePair(const ReferenceStatistics& stats) const {
    if (!IsPaired(run_.RefTrials)) return Verdict::PairIsOpen;
    if (run_.RefTrials == static_cast<int>(maxTrials)) return Verdict::AllDone;
    const bool differs =
        std::any_of(stats.TrialPairDifference.begin(), stats.TrialPairDifference.end(), ExceedsPairDifference);
    return differs ? Verdict::PairDiffers : Verdict::PairAgrees;
}

void frmRefReview::ShowHeadings() {
    std::vector<std::string> titles{"  Serial   ", "      Serial       ", " Initial  "};
    std::vector<std::string> headings{"No.", "Number", "Gain"};
    const auto add = [&](const std::string& title, const char* heading) {
        titles.push_back(title);
        headings.emplace_back(heading);
    };
    for (int trial = 1; trial <= run_.RefTrials; ++trial) {
        const std::string title = "    Trial " + NumberText(trial);
        add(title, "Std. Error");
        if (run_.RefTrials == 1) add(title, "Adj. Factor");
        add(title, "Ref. Gain");
    }
    if (IsPaired(run_.RefTrials)) {
        add(" Interim ", "  Gain   ");
        if (run_.RefTrials == 2) add("   Trial Pair   ", "Difference");
        if (run_.RefTrials == 4) add(" Standard ", "Deviation");
    }
    grdDefCal.SetHeadings(titles);
    grdDefCal.AddRow(headings);
}

void frmRefReview::ShowSensor(int sensor, const ReferenceStatistics& stats) {
    const auto s = static_cast<std::size_t>(sensor);
    const SensorCalRecord& record = run_.Sensor.at(s);
    const int row = fixedRows + sensor;
    std::vector<std::string> texts{NumberText(ShownSensorNumber(run_, sensor)), record.SerialNumber,
                                   Format(record.InitialGain, gainPicture)};
    std::vector<int> errorColumns;
    for (int t = 0; t < run_.RefTrials; ++t) {
        const TrialRecord& trial = record.RefTrial.at(static_cast<std::size_t>(t));
        errorColumns.push_back(static_cast<int>(texts.size()));
        texts.push_back(Format(trial.StdErrAdjFactor, finePicture));
        if (run_.RefTrials == 1) texts.push_back(Format(trial.AdjFactor, finePicture));
        texts.push_back(Format(trial.Gain, gainPicture));
    }
    if (IsPaired(run_.RefTrials)) texts.push_back(Format(stats.SensorMeanGain[s], gainPicture));
    grdDefCal.AddRow(texts);
    for (std::size_t t = 0; t < errorColumns.size(); ++t) {
        grdDefCal.SetCellColor(row, errorColumns[t], StdErrorColor(record.RefTrial[t].StdErrAdjFactor));
    }
    if (IsPaired(run_.RefTrials)) ShowPairCell(row, sensor, stats);
}

void frmRefReview::ShowPairCell(int row, int sensor, const ReferenceStatistics& stats) {
    const auto s = static_cast<std::size_t>(sensor);
    const int column = grdDefCal.Columns() - 1;
    if (run_.RefTrials == 2) {
        const double difference = stats.TrialPairDifference[s];
        grdDefCal.SetCell(row, column, Format(difference, finePicture));
        grdDefCal.SetCellColor(row, column, ExceedsPairDifference(difference) ? colors::mustBeUpdated : colors::passed);
    } else {
        grdDefCal.SetCell(row, column, Format(stats.SensorStdDev[s], finePicture));
        if (ExceedsLimit(std::abs(stats.SensorStdDev[s]), largestSensorStdDev)) {
            grdDefCal.SetCellColor(row, column, colors::warning);
        }
    }
}

/// The mean change of all gains is below the gains of each trial.
void frmRefReview::ShowSummaryRow() {
    std::vector<std::string> texts{"", "Avg.Change", ""};
    for (std::size_t t = 0; t < static_cast<std::size_t>(run_.RefTrials); ++t) {
        texts.insert(texts.end(), run_.RefTrials == 1 ? 2 : 1, "");
        texts.push_back(Format(run_.RefTrial.at(t).Change, "Percent"));
    }
    if (IsPaired(run_.RefTrials)) texts.push_back(Format(run_.RefCalChange, "Percent"));
    grdDefCal.AddRow(texts);
}

void frmRefReview::ShowVerdict() {
    const bool differs = verdict_ == Verdict::PairDiffers;
    cmdAccept.Caption = differs ? "&Next" : "&Accept";
    cmdAccept.BackColor = colors::suggestedNext;
    cmdReject.Caption = differs ? "&Results" : "&Reject";
    txtRefNotes.BackColor = colors::window;
    const std::string& note = run_.SensorRefMessage.at(static_cast<std::size_t>(run_.RefTrials));
    switch (verdict_) {
        case Verdict::PairIsOpen:
            txtRefNotes.Text = (note.empty() ? "" : note + "\r\n") +
                               "Accept the trial, turn the stand over, and do the second trial of the pair.";
            break;
        case Verdict::PairAgrees:
            txtRefNotes.Text = "Reference Trial criteria passed.";
            txtRefNotes.BackColor = colors::passed;
            break;
        case Verdict::PairDiffers:
            txtRefNotes.Text =
                "One or more sensors has a difference in the reference gain factor between the two trials of more "
                "than 0.005.\r\nPlease perform two more reference calibrations.";
            txtRefNotes.BackColor = colors::mustBeUpdated;
            break;
        case Verdict::AllDone:
            txtRefNotes.Text =
                "After 4 acceptable trials, please accept the reference calibration unless there is something "
                "obviously incorrect.";
            break;
    }
}

void frmRefReview::ShowStatistics(const ReferenceStatistics& stats) {
    fraRefStats.Visible = IsPaired(run_.RefTrials);
    lblAvgChange.Caption = "Mean change of the gains: " + Format(stats.AvgChange, "0.00%");
    lblPairDifference.Caption =
        "Mean difference of the pair: " + Format(stats.SumPairDifference / std::max(run_.NumberSensors, 1), "0.0000");
    lblScatter.Caption =
        stats.isAnySensorScattered ? "The gains of at least one sensor scatter by more than 0.003." : "";
}

void frmRefReview::AcceptTrial() {
    program_.The<FWDDataDoor>().PrintReport();
    RefCalcStats(run_, run_.RefTrials - 1, run_.RefTrials);
    AddToJournal(program_, "Sensor reference trial " + NumberText(run_.RefTrials) + " accepted");
    LeaveTrial(run_);
    run_.StdDevWarningDone = false;
    run_.CurrentProcStep = step::sensorsTrial;
    SaveInterimCalibration(program_);
}

void frmRefReview::cmdAccept_Click() {
    if (run_.RefTrials <= 0) return;
    if (run_.FlagUnacceptedTrial) {
        if (IsPaired(run_.RefTrials)) ResetRefCalGrid();
        AcceptTrial();
    }
    switch (verdict_) {
        case Verdict::PairDiffers:
            run_.SensorRefCalGood = false;
            [[fallthrough]];
        case Verdict::PairIsOpen:
            program_.The<MainMenuDoor>().CalibrateSensors();
            break;
        case Verdict::PairAgrees:
        case Verdict::AllDone:
            program_.The<ResultsDoor>().OpenReference();
            break;
    }
}

void frmRefReview::cmdReject_Click() {
    if (verdict_ != Verdict::PairDiffers) return program_.The<FWDDataDoor>().RejectTrial();
    // The results judge accepted trials only: this one is accepted here, so that none of it is lost.
    if (run_.FlagUnacceptedTrial) AcceptTrial();
    program_.The<ResultsDoor>().OpenReference();
}

void frmRefReview::cmdBack_Click() {
    program_.The<FWDDataDoor>().ReturnFromPlot();
}

void frmRefReview::cmdMainMenu_Click() {
    program_.The<MainMenuDoor>().Open();
}

}  // namespace bellmark
