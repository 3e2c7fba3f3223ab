#pragma once

#include <memory>
#include <string>
#include <vector>

#include "app/doors.h"
#include "app/page_header.h"
#include "controls/controls.h"
#include "controls/screen.h"

namespace bellmark {

class Program;

/// The checklist before reference data are taken: date and time, warm-up, and for the load cell the readings of the
/// signal conditioner, which give the day's shunt multiplier (AASHTO R32). One item after the other.
class frmPrerequisites : public Screen, public PrerequisitesDoor {
  public:
    explicit frmPrerequisites(Program& program);

    ctrlHeader Header;
    Label lblDateTime{*this, "lblDateTime"};
    Button cmdChangeTimeDate{*this, "cmdChangeTimeDate", "&Change Date and Time"};
    std::vector<std::unique_ptr<CheckBox>> chkPrereq;  ///< chkPrereq(0) to chkPrereq(8), those in use visible
    Frame fraStep{*this, "fraStep"};                   ///< the current item
    Label lblPrompt{fraStep, "lblPrompt"};             ///< the instruction for it
    Label lblReading{fraStep, "lblReading"};           ///< the reading taken last
    Button cmdOK{fraStep, "cmdOK", "&OK"};
    Button cmdNext{*this, "cmdNext", "&NEXT"};
    Button cmdMainMenu{*this, "cmdMainMenu", "&Main Menu"};
    Timer tmrDateTime{*this, "tmrDateTime", std::chrono::milliseconds(1000)};

    bool PrerequisitesMet(Procedure procedure) override;
    void ResetPreReq() override;
    void Activated() override;

  private:
    enum class Check { ByHand, UnbalancedZero, TrimmedZero, PlusVoltage, MinusVoltage };
    struct Item {
        Check check;
        std::string caption;
        std::string prompt;
        std::string reading{};  ///< that it passed with; empty for an item without one
    };
    static Item ByHand(const std::string& text) { return {Check::ByHand, text, text}; }

    std::vector<Item> LoadCellItems() const;
    std::vector<Item> AccelerometerItems() const;
    std::string WarmUpTime() const;
    bool IsComplete() const { return !items_.empty() && done_ == items_.size(); }
    void ShowItems();
    void ShowClock();

    bool Passes(Check check);
    bool UnbalancedZeroPasses();
    bool TrimmedZeroPasses();
    bool PlusVoltagePasses();
    bool MinusVoltagePasses();
    bool ShuntDifferencePasses();
    void WarnOfShuntSwitch();
    void ReadSignalConditioner(double simulatedVolts);
    std::string ShuntPair() const;
    void FinishItem();
    void GoOn();
    void Leave();

    void cmdChangeTimeDate_Click();
    void cmdOK_Click();
    void cmdNext_Click();
    void cmdMainMenu_Click();

    Program& program_;
    Procedure procedure_ = Procedure::None;  ///< of the list
    std::vector<Item> items_;                ///< empty until a list is begun
    std::size_t done_ = 0;                   ///< number of items done, from the top
};

}  // namespace bellmark
