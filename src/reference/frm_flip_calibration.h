#pragma once

#include <string>

#include "app/doors.h"
#include "app/page_header.h"
#include "controls/controls.h"
#include "controls/screen.h"
#include "reference/flip_results.h"

namespace bellmark {

class Program;

/// The daily calibration of the reference accelerometer against gravity: held upright, turned over, and turned back
/// (AASHTO R32).
class frmFlipCalibration : public Screen, public FlipCalibrationDoor {
  public:
    explicit frmFlipCalibration(Program& program);

    ctrlHeader Header;
    TextBox txtSerial{*this, "txtSerial"};
    TextBox txtExistSlope{*this, "txtExistSlope"};  ///< volts per g, compared with the new one
    TextBox txtExistOffset{*this, "txtExistOffset"};
    TextBox txtSlope{*this, "txtSlope"};
    TextBox txtOffset{*this, "txtOffset"};
    TextBox txtTemperature{*this, "txtTemperature"};
    TextBox txtPrompt{*this, "txtPrompt"};
    Label lblCountdown{*this, "lblCountdown"};
    TextBox txtLog{*this, "txtLog"};
    CheckBox chkSound{*this, "chkSound", "&Sound"};

    Frame fraResult{*this, "fraResult"};
    Label lblOK{fraResult, "lblOK"};
    Label lblSlopeChange{fraResult, "lblSlopeChange"};
    Label lblOffsetChange{fraResult, "lblOffsetChange"};
    Label lblTemperatureCheck{fraResult, "lblTemperatureCheck"};
    Label lblElapsed{fraResult, "lblElapsed"};
    Label lblDrift{fraResult, "lblDrift"};

    Button cmdStart{*this, "cmdStart", "&Start"};
    Button cmdAbort{*this, "cmdAbort", "A&bort"};
    Button cmdAccept{*this, "cmdAccept", "&Accept"};
    Button cmdReject{*this, "cmdReject", "&Reject"};
    Button cmdRepeat{*this, "cmdRepeat", "Re&peat"};
    Button cmdMainMenu{*this, "cmdMainMenu", "&Main Menu"};
    Timer tmrFlip{*this, "tmrFlip", std::chrono::milliseconds(1000)};

    void Start() override;
    void Left() override;

  private:
    void NextStep();
    void TakeNextStep();
    void StopTest(const std::string& reason);
    void tmrFlip_Tick();
    void cmdStart_Click();
    void cmdAbort_Click();
    void cmdAccept_Click();
    void cmdReject_Click();
    void cmdRepeat_Click();
    void cmdMainMenu_Click();

    void ShowStored();
    void ShowButtons(Button* suggested);
    void BeginPosition(const char* prompt, int countdown);
    void PlayBoard();
    void GetAccelData(FlipReading& reading);
    bool Judge(FlipPosition position);
    void ComputeResults();
    void ShowResult(Label& row, const FlipCheck& check);
    void SaveFlipData();
    void GoBack();
    void EndStepOfFlip();
    void Beep(int hertz, int milliseconds);

    Program& program_;
    FlipMeasurement measured_;
    FlipComparison comparison_;
    int calibrationStep_ = 0;
    int countdown_ = 0;
    bool recording_ = false;  ///< a block is being captured
    bool inHand_ = false;     ///< the results wait to be accepted or rejected
};

}  // namespace bellmark
