#pragma once

#include "app/ctrl_ht_drop_array.h"
#include "app/doors.h"
#include "app/page_header.h"
#include "controls/controls.h"
#include "controls/screen.h"

namespace bellmark {

class Program;

/// Collects the drops of a trial, height by height, on the grid of the trial.
class frmBellmark_Accel : public Screen, public CollectionDoor {
  public:
    explicit frmBellmark_Accel(Program& program);

    ctrlHeader Header;
    Label lblTrialNum{*this, "lblTrialNum"};
    Label lblUnits{*this, "lblUnits"};
    Frame fraLoadLevel{*this, "fraLoadLevel", "Height"};
    Label lblLoadNumber{fraLoadLevel, "lblLoadNumber"};
    Frame fraDropNumber{*this, "fraDropNumber", "Drop"};
    Label lblDropNumber{fraDropNumber, "lblDropNumber"};
    Label lblPrompt{*this, "lblPrompt"};
    ctrlHtDropArray DropDataDisplay;
    Button cmdNext{*this, "cmdNext", "&NEXT"};
    Button cmdMainMenu{*this, "cmdMainMenu", "&Main Menu"};
    Timer TimerAccel{*this, "TimerAccel", std::chrono::milliseconds(50)};

    void Bellmark() override;
    void Start() override;
    void GetResults() override;
    void ClearDropData() override;
    void PollButton(bool poll) override;
    void DisableButtons() override;
    void Activated() override;

  private:
    void cmdNext_Click();
    void cmdMainMenu_Click();
    void TimerAccel_Tick();
    void ReviewDrop(int index);
    void Enter();
    bool OffersResults(int trials, const char* done, const char* review);
    void ShowDropInHand();

    Program& program_;
    void TellWhatIsToBeRepeated();

    CalibrationRun& run_;
};

}  // namespace bellmark
