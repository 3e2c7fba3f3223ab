#pragma once

#include <array>
#include <string>

#include "app/doors.h"
#include "app/page_header.h"
#include "controls/controls.h"
#include "controls/screen.h"
#include "monthly/monthly_texts.h"
#include "monthly/monthly_trial.h"

namespace bellmark {

class Program;
struct CalibrationRun;

/// What is found in a monthly trial, and what the operator is to do: gains, analysis of variance, advice. Trials are
/// accepted here, and the final gains are given out.
class frmRelResults : public Screen, public RelativeResultsDoor {
  public:
    explicit frmRelResults(Program& program);

    ctrlHeader Header;
    Frame fraTitles{*this, "fraTitles"};
    Label lblTrial{fraTitles, "lblTrial"};
    Label lblFile{fraTitles, "lblFile"};
    Label lblNextStep{fraTitles, "lblNextStep"};
    Frame fraReplaced{*this, "fraReplaced", "Replaced Sensor"};
    ComboBox cboReplacedSensor{fraReplaced, "cboReplacedSensor"};
    Grid grdMeans{*this, "grdMeans", 2};
    Frame fraANOVA{*this, "fraANOVA", "Analysis of Variance"};
    Grid grdANOVA{fraANOVA, "grdANOVA"};
    TextBox txtResultsAnova{fraANOVA, "txtResultsAnova"};
    Label lblCritical{fraANOVA, "lblCritical"};
    Frame fraStdError{*this, "fraStdError", "Standard Error"};
    std::array<TextBox, 2> txtStandardError{
        {{fraStdError, "txtStandardError(0)"}, {fraStdError, "txtStandardError(1)"}}};
    std::array<Label, 2> UnitLabel{{{fraStdError, "UnitLabel(0)"}, {fraStdError, "UnitLabel(1)"}}};
    CheckBox chkANOVA{*this, "chkANOVA", "Show AN&OVA"};
    TextBox txtResults{*this, "txtResults"};
    Button cmdMainMenu{*this, "cmdMainMenu", "&Main Menu"};
    Button cmdBack{*this, "cmdBack", "&Back"};
    Button cmdReject{*this, "cmdReject", "&Reject"};
    Button cmdShowPlot{*this, "cmdShowPlot", "Show &Plot"};
    Button cmdNext{*this, "cmdNext", "&Next"};

    bool Start() override;
    void Open() override;
    void OpenNext() override;

  private:
    void cboReplacedSensor_Click();
    void chkANOVA_Click();
    void cmdBack_Click();
    void cmdNext_Click();
    void cmdReject_Click();
    void cmdShowPlot_Click();

    bool ReadDropData();
    void TellProblem(MonthlyProblem problem, int sensors);
    void TellAboutReading();
    void TellReplacedGain();
    int Trials() const;
    MonthlyFacts Facts() const;
    void ShowResults();
    void ShowMeans();
    std::vector<std::string> MeansRow(std::size_t sensor) const;
    void ColorMeans(std::size_t sensor);
    void ShowStandardError();
    void ShowTexts();
    void ShowReplacedSensor();
    void ShowStage();
    bool MayAccept() const;
    std::string Prompt() const;
    void AcceptTrial();
    bool WriteReport(const Path& path, const std::string& text);
    void TakeDecision();
    void FinishMonthly();
    void FinishReplacement();

    Program& program_;
    CalibrationRun& run_;
    MonthlyReading reading_;    ///< of the trial shown
    MonthlyAnalysis analysis_;  ///< of the trial shown
    MonthlyCounts counts_;
    bool plotWasShown_ = false;  ///< of the trial shown
};

}  // namespace bellmark
