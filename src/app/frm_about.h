#pragma once

#include "app/doors.h"
#include "app/interim_store.h"
#include "app/page_header.h"
#include "controls/controls.h"
#include "controls/screen.h"

namespace bellmark {

class Program;

/// The start form: a new calibration, one of the interim calibrations, or a monthly one. Opened from the menu it only
/// shows what the program is.
class frmAbout : public Screen, public StartFormDoor {
  public:
    explicit frmAbout(Program& program);

    ctrlHeader Header;
    Label lblVersion{*this, "lblVersion"};
    Label lblReviewMode{*this, "lblReviewMode", "Review Mode"};
    Frame fraStart{*this, "fraStart"};
    Button cmdStartNewCal{fraStart, "cmdStartNewCal", "&Start New Calibration"};
    Button cmdRelativeCal{fraStart, "cmdRelativeCal", "Relati&ve Calibration"};
    Button cmdReadCalCenterA{fraStart, "cmdReadCalCenterA", "Read &Center Configuration"};
    Button cmdCloseAbout{*this, "cmdCloseAbout", "&Close"};  ///< only where the form was opened from the menu
    Frame fraInterimCals{*this, "fraInterimCals", "Interim calibrations"};
    Grid grdInterim{fraInterimCals, "grdInterim"};
    Button cmdOpenInterimCal{fraInterimCals, "cmdOpenInterimCal", "&Open Interim Calibration"};
    Button cmdDeleteInterim{fraInterimCals, "cmdDeleteInterim", "&Delete Interim Calibration"};
    Timer tmrShowTime{*this, "tmrShowTime", std::chrono::milliseconds(5000)};

    void ShowStart() override;
    void ShowAbout() override;
    void EnableInterimButtons() override;
    void AllowReadingCenter(bool allowed) override { cmdReadCalCenterA.Enabled = allowed; }
    void AnnounceReviewMode() override;
    void StartShowTimer() override { tmrShowTime.Start(); }
    void Clicked() override { tmrShowTime.Stop(); }
    void ListInterimCalibrations();

  private:
    void cmdStartNewCal_Click();
    void cmdReadCalCenterA_Click();
    void cmdOpenInterimCal_Click();
    void cmdDeleteInterim_Click();
    void grdInterim_Click(int row);
    void MarkRow(int row);
    int RowToMark() const;
    void SuggestStart();
    std::optional<InterimCalibration>
    MarkedInterim();  ///< nothing, with the keyboard at the list, when no row is marked
    void TakeName(const InterimCalibration& interim);
    bool OffersCopy(const InterimCalibration& interim);

    Program& program_;
    bool backToStart_ = false;  ///< the about view covers the start form
};

}  // namespace bellmark
