#pragma once

#include "app/doors.h"
#include "app/page_header.h"
#include "controls/controls.h"
#include "controls/picture.h"
#include "controls/screen.h"
#include "reference/reference_instrument.h"

namespace bellmark {

class Program;

/// One drop: captured, analysed, drawn, saved, and accepted or rejected.
class frmBellmark_AccelDrop : public Screen, public DropDoor {
  public:
    explicit frmBellmark_AccelDrop(Program& program);

    ctrlHeader Header;
    Label lblHeightDrop{*this, "lblHeightDrop"};
    Label lblTrialDrop{*this, "lblTrialDrop"};  ///< "Trial 1, drop 7 of 24"
    Label lblState{*this, "lblState"};          ///< the meaning of the screen's colour, in words
    Label lblFilename{*this, "lblFilename"};
    Picture picDropResponse{*this, "picDropResponse"};
    CheckBox chkZoom{*this, "chkZoom", "&Zoomed In"};
    Frame Frame1{*this, "Frame1", "Show"};
    OptionButton optAcceleration{Frame1, "optAcceleration", "curve"};
    OptionButton optVelocity{Frame1, "optVelocity", "curve"};
    OptionButton optStdDev{Frame1, "optStdDev", "curve"};
    OptionButton optDeflection{Frame1, "optDeflection", "curve"};
    Label lblPeakCaption{*this, "lblPeakCaption"};
    Label lblPeakMils{*this, "lblPeakMils"};
    Label lblMilsUnit{*this, "lblMilsUnit"};
    Label lblPeakMicrons{*this, "lblPeakMicrons"};
    Label lblMicronsUnit{*this, "lblMicronsUnit"};
    Label lblRiseTime{*this, "lblRiseTime"};
    Label lblZeroCaption{*this, "lblZeroCaption"};
    Label lblZeroCalc0{*this, "lblZeroCalc(0)"};
    Label lblZeroCalc1{*this, "lblZeroCalc(1)"};
    Label lblZeroUnit0{*this, "lblZeroUnit(0)"};
    Label lblZeroUnit1{*this, "lblZeroUnit(1)"};
    Label lblNoise{*this, "lblNoise", "Excess Noise in the Zero Array!"};
    Frame fraMessage{*this, "fraMessage"};
    Label lblMessageTitle{fraMessage, "lblMessageTitle"};
    Label lblMessageText{fraMessage, "lblMessageText"};
    Button cmdErrOK{fraMessage, "cmdErrOK", "&OK"};
    Button cmdAccept{*this, "cmdAccept", "&Accept"};
    Button cmdReject{*this, "cmdReject", "&Reject"};
    Button cmdMainMenu{*this, "cmdMainMenu", "&Main Menu"};
    Timer TimerDrop{*this, "TimerDrop", std::chrono::milliseconds(50)};

    void Start() override;
    void StartReview() override;
    void DisableButtons() override;
    bool CheckTrigger(double volts) override;
    void TellOfNewStart() override;
    void Activated() override;
    void Left() override;
    int HelpContext() const override { return fraMessage.Visible ? panelHelp_ : 0; }

    void ClearDropResults();

  private:
    void PrepareDrop();
    void ShowDrop();
    void ShowResults(const DropVerdict& verdict);
    void ShowNoiseVerdict(const DropVerdict& verdict);
    void SuggestAnswer();
    void AllowAnswers();
    bool WriteDropFile();
    void PlotResponse();
    void OpenPanel();
    void RejectDrop();
    std::string FileName() const;
    void Note(const std::string& event);
    void LeaveReview();
    void SetState(const char* words, Color color);
    void PollButton(bool poll);

    void cmdErrOK_Click();
    void cmdAccept_Click();
    void cmdReject_Click();
    void cmdMainMenu_Click();
    void chkZoom_Click();
    void TimerDrop_Tick();

    Program& program_;
    int panelHelp_ = 0;
    std::unique_ptr<ReferenceInstrument> instrument_;  ///< measures the drop in hand
    bool acceptable_ = false;                          ///< the drop in hand has a peak and its file
    bool outOfRange_ = false;                          ///< it is beyond the range of the instrument
};

}  // namespace bellmark
