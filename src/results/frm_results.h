#pragma once

#include <functional>

#include "app/doors.h"
#include "app/page_header.h"
#include "controls/controls.h"
#include "controls/screen.h"
#include "controls/tabs.h"
#include "results/accelerometer_tab.h"
#include "results/load_cell_tab.h"
#include "results/reference_tab.h"
#include "results/summary_tab.h"

namespace bellmark {

class Program;

/// The results of a calibration in tabs. Here they are judged and accepted, and the outputs are written.
class frmResults : public Screen, public ResultsDoor {
  public:
    explicit frmResults(Program& program);

    ctrlHeader Header;
    SummaryTab Summary;
    LoadCellTab LoadCell;
    AccelerometerTab Accelerometer;
    ReferenceTab Reference;
    /// (1) is for a complete calibration, (0) for the part accepted so far: a load cell alone gets a certificate, too.
    Button cmdPrintPDDX[2]{{*this, "cmdPrintPDDX(0)", "&Final Outputs"},
                           {LoadCell.fraLoadCell, "cmdPrintPDDX(1)", "Final Outputs and &Certificate"}};
    Button cmdSaveCertificate{*this, "cmdSaveCertificate", "Save &Text Certificate"};
    Button cmdNext{*this, "cmdNext", "&NEXT"};
    Button cmdMainMenu{*this, "cmdMainMenu", "&Main Menu"};
    TextBox txtPleaseWait{*this, "txtPleaseWait"};

    void Activated() override;

    void Open() override;
    void OpenLoadCell() override;
    void OpenAccelerometer() override;
    void OpenReference() override;
    void Recompute() override;

  private:
    void cmdNext_Click();
    void WhileWaiting(const std::function<void()>& work);
    void cmdPrintPDDX_Click();
    void cmdMainMenu_Click();
    void SaveCertificateText();
    void AreYouDone();
    void ChooseTab(OptionButton& tab);
    void KeepStepOfTab();
    void ShowNextSteps();
    Button* StepOfTab();
    Button& NextStep();
    bool IsCalibrationLeft() const;

    Program& program_;
    Tabs tabs_{{{Summary.optSummary, Summary.fraSummary},  // in the order of the review's steps
                {Accelerometer.optAccel, Accelerometer.fraAccel},
                {Reference.optRef, Reference.fraRef},
                {LoadCell.optLoadCell, LoadCell.fraLoadCell}}};
};

}  // namespace bellmark
