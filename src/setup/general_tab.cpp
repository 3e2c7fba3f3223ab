#include "setup/general_tab.h"

#include <algorithm>

#include "app/change_trials.h"
#include "app/doors.h"
#include "app/program.h"
#include "app/workflow.h"
#include "platform/dialogs.h"
#include "platform/format.h"
#include "platform/numbers.h"
#include "platform/text.h"
#include "platform/typed_number.h"
#include "run/stored_values.h"

namespace bellmark {

namespace {

constexpr const char* poundsPicture = "#,##0";
constexpr const char* kilonewtonsPicture = "#,##0.0";
constexpr int mostTrigger = 1'000'000;
constexpr int fewestDrops = 5;
constexpr int mostDrops = 10;

/// The number as a picture shows it.
double ThroughPicture(double value, const char* picture) {
    return TypedNumber(Format(value, picture)).value_or(0);
}

}  // namespace

GeneralTab::GeneralTab(Screen& screen, Program& program) : screen_(screen), program_(program) {
    cboNumHeights.Items = {"3", "4"};
    OfferDrops(fewestDrops);
    cmdApproveCalSeq.ToolTip = "Available for Load Cell Calibration ONLY.";
    cmdNumberDrops.Enabled = program_.Has<TriggerDoor>();
    cmdTriggerLevel.Enabled = program_.Has<TriggerDoor>();
    cboNumHeights.Click = [this] { ChooseSequence(); };
    cboNumDrops.Click = [this] { ChooseSequence(); };
    optEnglish.Click = [this] { ChooseUnits(true); };
    optMetric.Click = [this] { ChooseUnits(false); };
    optAutoPrint[0].Click = [this] { program_.Run.AutoPrint = true; };
    optAutoPrint[1].Click = [this] { program_.Run.AutoPrint = false; };
    loadCellTrigger.Leave = [this] { loadCellTrigger_Leave(); };
    AccelTrigger.Leave = [this] { AccelTrigger_Leave(); };
    txtComment.Leave = [this] { txtComment_Leave(); };
    cmdApproveCalSeq.Click = [this] { cmdApproveCalSeq_Click(); };
    cmdNumberDrops.Click = [this] {
        EnterProcedure(Procedure::NumberOfDrops, step::dropsCheck, "Determine Minimum Number of Drops Per Load Level");
    };
    cmdTriggerLevel.Click = [this] {
        EnterProcedure(Procedure::TriggerLevel, step::triggerCheck, "Determine Accelerometer Trigger Level");
    };
    ShowAutoPrint();
    ShowUnits();
    ShowSequence();
}

void GeneralTab::BeginRun() {
    SetEnabled({&cmdApproveCalSeq, &cboNumHeights, &cboNumDrops}, true);
    SetEnabled({&cmdNumberDrops, &cmdTriggerLevel}, program_.Has<TriggerDoor>());
    for (Control* control : std::initializer_list<Control*>{&AccelTrigger, &cboNumHeights, &cboNumDrops})
        control->BackColor = colors::window;
    for (Button* button : {&cmdNumberDrops, &cmdTriggerLevel}) button->BackColor = colors::buttonFace;
    OfferDrops(fewestDrops);
}

void GeneralTab::OfferDrops(int least) {
    std::vector<std::string> numbers;
    for (int drops = least; drops <= mostDrops; ++drops) numbers.push_back(NumberText(drops));
    cboNumDrops.Items = numbers;
}

void GeneralTab::ShowMeasuredTrigger() {
    AccelTrigger.Text = Format(program_.Center.AccelSensitivity, "0.00");
    AccelTrigger.BackColor = colors::complete;
    cmdTriggerLevel.BackColor = colors::complete;
}

void GeneralTab::ForgetMeasuredTrigger() {
    AccelTrigger.BackColor = colors::window;
    cmdTriggerLevel.BackColor = colors::buttonFace;
}

void GeneralTab::ShowMeasuredDrops() {
    OfferDrops(program_.Run.NumberDropsPerLoadLevel);
    cboNumDrops.ListIndex = 0;
    cboNumDrops.BackColor = colors::complete;
    cmdNumberDrops.BackColor = colors::complete;
    cboNumHeights.BackColor = colors::window;
}

/// The measured number of drops is valid only for the heights at which it was measured.
void GeneralTab::AskForDropsAnew() {
    program_.Run.NumberDropsSet = false;
    cboNumDrops.BackColor = colors::mustBeUpdated;
    cmdNumberDrops.BackColor = colors::mustBeUpdated;
    OfferDrops(fewestDrops);
}

void GeneralTab::ShowUnits() {
    (program_.Run.EnglishUnits ? optEnglish : optMetric).Choose();
    txtTriggerUnits.Caption = program_.Run.EnglishUnits ? poundForce : "kN";
}

void GeneralTab::ShowAutoPrint() {
    optAutoPrint[program_.Run.AutoPrint ? 0 : 1].Choose();
}

void GeneralTab::ShowSequence() {
    cboNumHeights.ChooseText(NumberText(program_.Run.NumberLoadLevels));
    const std::string drops = NumberText(program_.Run.NumberDropsPerLoadLevel);
    if (cboNumDrops.ChooseText(drops)) return;
    // The measurement of another run has shortened the list.
    OfferDrops(fewestDrops);
    cboNumDrops.ChooseText(drops);
}

void GeneralTab::ShowComment() {
    std::string lines;
    for (const std::string& note : program_.Center.Notes) {
        if (Trim(note).empty()) continue;
        if (!lines.empty()) lines += "\r\n";
        lines += Trim(note);
    }
    txtComment.Text = lines;
}

double GeneralTab::TriggerInRunUnits() const {
    const double stored = program_.Center.ReferenceLoadCellSensitivity;
    const bool inPounds = program_.Center.ReferenceLoadCellUnits == poundForce;
    if (program_.Run.EnglishUnits == inPounds) return stored;
    return inPounds ? stored * kilonewtonsPerPound : stored / kilonewtonsPerPound;
}

void GeneralTab::ShowPlainTrigger() {
    loadCellTrigger.Text = NumberText(TriggerInRunUnits());
    AccelTrigger.Text = NumberText(program_.Center.AccelSensitivity);
}

void GeneralTab::ShowTrigger() {
    loadCellTrigger.Text = Format(TriggerInRunUnits(), program_.Run.EnglishUnits ? poundsPicture : kilonewtonsPicture);
}

void GeneralTab::ChooseUnits(bool english) {
    const CalibrationRun& run = program_.Run;
    const bool may = MayChangeTrials(program_, {run.NumberLoadLevels, run.NumberDropsPerLoadLevel, english});
    if (may) program_.Run.EnglishUnits = english;
    ShowUnits();
    ShowTrigger();
}

void GeneralTab::ChooseSequence() {
    CalibrationRun& run = program_.Run;
    const int heights = StoredWhole(cboNumHeights.DisplayText(), 3, 4);
    const int drops = StoredWhole(cboNumDrops.DisplayText(), fewestDrops, mostDrops);
    if (!MayChangeTrials(program_, {heights, drops, run.EnglishUnits})) return ShowSequence();
    if (heights != run.NumberLoadLevels && run.NumberDropsSet && !run.LoadCellOnly) AskForDropsAnew();
    run.NumberLoadLevels = heights;
    run.NumberDropsPerLoadLevel = drops;
    ShowSequence();
}

void GeneralTab::loadCellTrigger_Leave() {
    const auto typed = TypedNumber(loadCellTrigger.Text.Get());
    if (!typed || *typed < 0 || *typed > mostTrigger) {
        program_.ShowBox("Please type in a number", box::exclamation, "Load Cell Trigger");
        ShowTrigger();
        return;
    }
    const bool english = program_.Run.EnglishUnits;
    const bool inPounds = program_.Center.ReferenceLoadCellUnits == poundForce;
    double stored = *typed;
    if (english && !inPounds) stored *= kilonewtonsPerPound;
    if (!english && inPounds) stored /= kilonewtonsPerPound;
    program_.Center.ReferenceLoadCellSensitivity =
        ThroughPicture(stored, inPounds ? poundsPicture : kilonewtonsPicture);
    loadCellTrigger.Text = Format(*typed, english ? poundsPicture : kilonewtonsPicture);
}

void GeneralTab::AccelTrigger_Leave() {
    const auto typed = TypedNumber(AccelTrigger.Text.Get());
    if (!typed || *typed < 0 || *typed > mostTrigger) {
        program_.ShowBox("Please type in a number", box::exclamation, "Accelerometer Trigger");
        AccelTrigger.Text = Format(program_.Center.AccelSensitivity, "0.00");
        return;
    }
    const std::string before = Format(program_.Center.AccelSensitivity, "0.00");
    program_.Center.AccelSensitivity = ThroughPicture(*typed, "0.00");
    AccelTrigger.Text = Format(program_.Center.AccelSensitivity, "0.00");
    // The level differs from the measured one.
    if (AccelTrigger.Text.Get() != before) ForgetMeasuredTrigger();
}

/// Each line is a note; lines beyond the last note are removed from the box too, so that the operator sees it.
void GeneralTab::txtComment_Leave() {
    auto& notes = program_.Center.Notes;
    notes.fill({});
    std::size_t taken = 0;
    for (const auto line : SplitLines(txtComment.Text.Get())) {
        if (taken < notes.size() && !Trim(line).empty()) notes[taken++] = Trim(line);
    }
    // The files separate the notes by commas.
    for (std::string& note : notes) std::replace(note.begin(), note.end(), ',', ';');
    ShowComment();
}

void GeneralTab::EnterProcedure(Procedure procedure, int step, const char* header) {
    program_.Run.CurrentProcedure = procedure;
    program_.Run.CurrentProcStep = step;
    if (program_.Has<PrerequisitesDoor>()) program_.The<PrerequisitesDoor>().ResetPreReq();
    program_.Header.SetProcedureName(header);
    ReturnToProcedure(program_, procedure);
}

void GeneralTab::cmdApproveCalSeq_Click() {
    program_.Compose(160);
    if (program_.ShowComposed() != Answer::Yes) return;
    program_.Run.NumberDropsSet = true;
    program_.Run.TriggerLevelSet = false;
    program_.Run.LoadCellOnly = true;
    ForgetMeasuredTrigger();
    SetEnabled({&cmdApproveCalSeq, &cmdNumberDrops, &cboNumHeights, &cboNumDrops}, false);
    SequenceApproved();
}

}  // namespace bellmark
