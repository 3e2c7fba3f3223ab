#pragma once

#include "app/doors.h"
#include "controls/controls.h"
#include "controls/screen.h"

namespace bellmark {

class Program;

/// The main frame: its menus can be used whatever screen is in front.
class frmMaster : public Screen, public MainFrameDoor {
  public:
    explicit frmMaster(Program& program);

    Button mnuSetup{*this, "mnuSetup", "&Setup"};
    Button mnuExit{*this, "mnuExit", "E&xit"};
    Button mnuAccelerometerCalibration{*this, "mnuAccelerometerCalibration", "&Accelerometer Calibration"};
    Button mnuReferenceLoadCellCalibration{*this, "mnuReferenceLoadCellCalibration",
                                           "Reference &Load Cell Calibration"};
    Button mnuLoadCell{*this, "mnuLoadCell", "Load Cell"};
    Button mnuDeflectionSensors{*this, "mnuDeflectionSensors", "Deflection Sensors"};
    Button mnuDocumentation{*this, "mnuDocumentation", "Documentation"};
    Button mnuRelativeCalibration{*this, "mnuRelativeCalibration", "Relative Calibration"};
    Button mnuReplaceSensor{*this, "mnuReplaceSensor", "Replace a Sensor"};
    Button mnuContents{*this, "mnuContents", "&Contents"};
    Button mnuIndex{*this, "mnuIndex", "&Index"};
    Button mnuAbout{*this, "mnuAbout", "&About Bellmark"};

    Frame fraWaiting{*this, "fraWaiting"};
    Label lblWaiting{fraWaiting, "lblWaiting"};
    Button cmdCancelWaiting{fraWaiting, "cmdCancelWaiting", "Cancel"};

    bool IsAlwaysAtHand() const override { return true; }
    void CloseRequested() override;
    void AllowProcedures(bool loadCell, bool sensors) override;
    void AllowWhatNeedsARun(bool isInHand) override;
    void SetMeasuring(bool measuring) override;
    void BeginWaiting(const std::string& text) override;
    bool WaitingCancelled() const override { return waitingCancelled_; }
    void EndWaiting() override;

  private:
    void ShowWhatIsAllowed();
    bool IsInFront(const char* screen) const;
    void mnuContents_Click();
    void mnuAccelerometerCalibration_Click();
    void mnuLoadCell_Click();
    void mnuDeflectionSensors_Click();
    bool OperatorWantsToSwitch(const char* question);

    Program& program_;
    bool waitingCancelled_ = false;
    bool runIsInHand_ = false;
    bool loadCellIsAllowed_ = false;
    bool sensorsAreAllowed_ = false;
    bool measuring_ = false;
};

}  // namespace bellmark
