#pragma once

#include <optional>

#include "app/doors.h"
#include "app/page_header.h"
#include "controls/controls.h"
#include "controls/picture.h"
#include "controls/screen.h"
#include "reference/accelerometer_instrument.h"
#include "reference/trigger_search.h"

namespace bellmark {

class Program;

/// The set-up values of a sensor calibration that are measured on the FWD itself: the accelerometer's trigger level,
/// from one drop, and the number of drops at each height, from a drop of the highest and one of the lowest height.
class frmBellmark_AccelTrigger : public Screen, public TriggerDoor {
  public:
    explicit frmBellmark_AccelTrigger(Program& program);

    ctrlHeader Header;
    Label lblTask{*this, "lblTask"};    ///< which drop is wanted
    Label lblState{*this, "lblState"};  ///< the meaning of the screen's colour, in words
    Frame fraMessage{*this, "fraMessage"};
    Label lblMessageTitle{fraMessage, "lblMessageTitle"};
    TextBox txtError{fraMessage, "txtError"};
    Button cmdErrOK{fraMessage, "cmdErrOK", "&OK"};
    Picture picDropResponse{*this, "picDropResponse"};
    CheckBox chkZoom{*this, "chkZoom", "&Zoomed In"};
    Frame Frame1{*this, "Frame1", "Show"};
    OptionButton optAcceleration{Frame1, "optAcceleration", "curve", "Accele&ration"};
    OptionButton optVelocity{Frame1, "optVelocity", "curve", "&Velocity"};
    OptionButton optDeflection{Frame1, "optDeflection", "curve", "&Deflection"};
    Label lblPeakValue{*this, "lblPeakValue"};
    Label lblPeakUnit{*this, "lblPeakUnit"};
    Label lblRiseTime{*this, "lblRiseTime"};
    Frame fraTrigger{*this, "fraTrigger", "Trigger level"};
    Label lblCurrentTrigger{fraTrigger, "lblCurrentTrigger"};  ///< g; a click keeps it
    Label lblNewTrigger{fraTrigger, "lblNewTrigger"};          ///< g; a click takes it
    Label lblUpperTrigger{fraTrigger, "lblUpperTrigger"};
    Label lblLowerTrigger{fraTrigger, "lblLowerTrigger"};
    Grid grdLevels{fraTrigger, "grdLevels"};  ///< result of the search at each level
    Button cmdSaveLevels{fraTrigger, "cmdSaveLevels", "Save &Table"};
    Button cmdStart{*this, "cmdStart", "&Start"};
    Button cmdAccept{*this, "cmdAccept", "&Calc. Trigger"};
    Button cmdTooEarly{*this, "cmdTooEarly", "&Early Trigger"};
    Button cmdNoTrigger{*this, "cmdNoTrigger", "No Trigger"};
    Button cmdCancel{*this, "cmdCancel", "Ca&ncel"};
    Button cmdMainMenu{*this, "cmdMainMenu", "&Main Menu"};
    Timer TimerDrop{*this, "TimerDrop", std::chrono::milliseconds(50)};

    void LoadStart() override;
    void NumDropsStart(int drop) override;
    void Activated() override;
    void Left() override;
    int HelpContext() const override { return fraMessage.Visible ? panelHelp_ : 0; }

  private:
    enum class DropCountMode { HighDrop = 1, LowDrop = 2, Computing = 3 };

    void Start();
    void PrepareDrop();
    void ShowDrop(const DropVerdict& verdict);
    void AllowAnswers(bool hasPeak);
    void Determine_Trigger();
    void ShowLevels();
    void ComputeNumberOfDrops();
    void PlotResponseCurve();
    void AddTriggerBand(Plot& plot) const;

    void cmdStart_Click() { Start(); }
    void cmdAccept_Click();
    void cmdTooEarly_Click();
    void cmdNoTrigger_Click();
    void cmdCancel_Click();
    void cmdMainMenu_Click();
    void cmdErrOK_Click();
    void cmdSaveLevels_Click();
    void chkZoom_Click();
    void TimerDrop_Tick();

    bool MeasuresTrigger() const;
    void BeginMeasurement();
    void ClearResults();
    void ForgetProposal();
    void ShowPanel(int code);
    void ShowCurrentTrigger(const char* picture);
    void SetState(const std::string& words, Color color);
    void Suggest(Button* next);
    void SetLevelByHand(double level);
    void TakeLevel(double level);
    void StopMeasuring();
    void GoBackToSetup();

    Program& program_;
    AccelerometerInstrument instrument_;
    double levelInForce_ = 0;  ///< g: the last accepted level, unchanged by tries since
    int panelHelp_ = 0;
    std::optional<TriggerBand> band_;  ///< the proposal, once there is one
    DropCountMode dropCountMode_ = DropCountMode::HighDrop;
    double highDropPeak_ = 0;  ///< microns
    double lowDropPeak_ = 0;
};

}  // namespace bellmark
