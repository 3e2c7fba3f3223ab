#pragma once

#include "app/doors.h"
#include "app/page_header.h"
#include "controls/controls.h"
#include "controls/screen.h"
#include "controls/tabs.h"
#include "setup/center_tab.h"
#include "setup/data_acq_tab.h"
#include "setup/fwd_tab.h"
#include "setup/general_tab.h"

namespace bellmark {

class Program;

/// Leads the operator through the set-up of a run, tab by tab; later the same screen edits it.
class frmSetup : public Screen, public SetupDoor {
  public:
    explicit frmSetup(Program& program);

    ctrlHeader Header;
    CenterTab Center;
    FWDTab FWD;
    DataAcqTab DataAcq;
    GeneralTab General;
    Button cmdNext{*this, "cmdNext", "&NEXT"};
    Button cmdMainMenu{*this, "cmdMainMenu", "&Main Menu"};

    void Activated() override;

    void Open() override { Show(); }
    void BeginRun() override;
    void OpenCenterPage() override;
    void OpenPage(int step) override;
    bool ReadCalCenter() override;
    bool ReadCalCenterFromFolderOf(const Path& configuration) override;
    void ShowCenter() override;
    void AllowCalibration() override;
    void SetReviewChoices(bool reviewMode) override;
    void RefreshFromRun() override;
    void TriggerLevelMeasured() override;
    void NumberOfDropsMeasured() override;
    void ReturnFromMeasurement() override;

    /// Restores the run of an interim file for review.
    void ReviewDataRestore(const Path& path);

  private:
    void cmdNext_Click();
    void cmdMainMenu_Click();
    void CenterApproved();
    void EditCenter(bool editing);
    void SaveWhatIsKnown();
    void AskForSequence();
    void SuggestWhatIsNotMeasured();
    void EndSetup(Procedure procedure, int step, const char* header);
    bool ReadRunForReview(const Path& path);

    Program& program_;
    Tabs tabs_{{{Center.optCalCenter, Center.fraCalCenter},
                {FWD.optFWD, FWD.fraFWD},
                {DataAcq.optDataAcq, DataAcq.fraDataAcq},
                {General.optGeneral, General.fraGeneral}}};
    bool nextWasEnabled_ = false;  ///< before the center's cells were unlocked
};

}  // namespace bellmark
