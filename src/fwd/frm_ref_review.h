#pragma once

#include <string>
#include <vector>

#include "app/doors.h"
#include "app/page_header.h"
#include "controls/controls.h"
#include "controls/screen.h"

namespace bellmark {

class Program;
struct CalibrationRun;
struct ReferenceStatistics;

/// All deflection sensors side by side after a reference trial. The operator accepts it and sees whether the pair
/// agrees or two more trials are needed.
class frmRefReview : public Screen, public ReferenceReviewDoor {
  public:
    explicit frmRefReview(Program& program);

    ctrlHeader Header;
    Grid grdDefCal{*this, "grdDefCal", 2};
    TextBox txtRefNotes{*this, "txtRefNotes"};
    Frame fraRefStats{*this, "fraRefStats", "Both positions of the stand"};
    Label lblAvgChange{fraRefStats, "lblAvgChange"};
    Label lblPairDifference{fraRefStats, "lblPairDifference"};
    Label lblScatter{fraRefStats, "lblScatter"};
    Label Label7{fraRefStats, "Label7", "RMS difference"};
    TextBox txtRMSorStdDev{fraRefStats, "txtRMSorStdDev"};
    Button cmdMainMenu{*this, "cmdMainMenu", "&Main Menu"};
    Button cmdBack{*this, "cmdBack", "&Back"};
    Button cmdReject{*this, "cmdReject", "&Reject"};
    Button cmdAccept{*this, "cmdAccept", "&Accept"};

    void Start() override;

  private:
    void cmdAccept_Click();
    void cmdReject_Click();
    void cmdBack_Click();
    void cmdMainMenu_Click();

    /// Result of the trials so far: each has its own captions, colours and next step.
    enum class Verdict { PairIsOpen, PairAgrees, PairDiffers, AllDone };
    Verdict JudgePair(const ReferenceStatistics& stats) const;
    void ResetRefCalGrid();
    void ShowTrials();
    void ShowHeadings();
    void ShowSensor(int sensor, const ReferenceStatistics& stats);
    void ShowPairCell(int row, int sensor, const ReferenceStatistics& stats);
    void ShowSummaryRow();
    void ShowVerdict();
    void ShowStatistics(const ReferenceStatistics& stats);
    void AcceptTrial();

    Program& program_;
    CalibrationRun& run_;
    Verdict verdict_ = Verdict::PairIsOpen;
};

}  // namespace bellmark
