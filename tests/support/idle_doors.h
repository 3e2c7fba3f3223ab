#pragma once

#include <algorithm>

#include "app/doors.h"
#include "app/program.h"
#include "controls/screen.h"
#include "pddx/pddx_file.h"

/// Implementations of the doors of screens that a test is not about. Idle doors do nothing; a test overrides what it
/// needs. Fake ones record their calls, or answer as the test sets.
namespace bellmark {

struct IdleMainFrame : MainFrameDoor {
    void AllowProcedures(bool, bool) override {}
    void AllowWhatNeedsARun(bool) override {}
    void SetMeasuring(bool) override {}
    void BeginWaiting(const std::string&) override {}
    bool WaitingCancelled() const override { return false; }
    void EndWaiting() override {}
};

struct IdleMainMenu : MainMenuDoor {
    void Open() override {}
    void MarkAccelerometer() override {}
    void AllowProcedures(bool, bool) override {}
    void EditSetup() override {}
    void CalibrateAccelerometer() override {}
    void CalibrateLoadCell() override {}
    void CalibrateSensors() override {}
};

struct IdleCollection : CollectionDoor {
    void Bellmark() override {}
    void Start() override {}
    void GetResults() override {}
    void ClearDropData() override {}
    void PollButton(bool) override {}
    void DisableButtons() override {}
};

struct IdleDrop : DropDoor {
    void Start() override {}
    void StartReview() override {}
    void DisableButtons() override {}
    bool CheckTrigger(double) override { return false; }
    void TellOfNewStart() override {}
};

/// All prerequisites are met.
struct IdlePrerequisites : PrerequisitesDoor {
    bool PrerequisitesMet(Procedure) override { return true; }
    void ResetPreReq() override {}
};

struct IdleFlipCalibration : FlipCalibrationDoor {
    void Start() override {}
};

struct IdleReferenceReview : ReferenceReviewDoor {
    void Start() override {}
};

struct IdleCenterRelative : CenterRelativeDoor {
    void Start() override {}
    void BeginTrial() override {}
    void ReturnFromPlot() override {}
    void AcceptRelativeTrial() override {}
};

struct IdleFWDData : FWDDataDoor {
    void Start() override {}
    void Refresh() override {}
    void ReturnFromPlot() override {}
    void AcceptTrial() override {}
    void RejectTrial() override {}
    void PrintReport() override {}
};

struct IdleResults : ResultsDoor {
    void Open() override {}
    void OpenLoadCell() override {}
    void OpenAccelerometer() override {}
    void OpenReference() override {}
    void Recompute() override {}
};

/// Replaces the main menu, as a screen that comes to the front.
struct FakeMainMenu : Screen, IdleMainMenu {
    explicit FakeMainMenu(Program& program) : Screen(program.Screens, "frmMainMenu", "Main Menu") {}
    int opened = 0;
    void Open() override {
        ++opened;
        Show();
    }
};

/// Replaces the set-up screen, and counts the calls.
struct FakeSetup : SetupDoor {
    int opened = 0;
    int centerPageOpened = 0;
    int centerReads = 0;
    int centerShown = 0;
    bool readsCenter = true;
    Path configurationRead;
    bool reviewChoices = false;
    int triggerLevels = 0;
    int numbersOfDrops = 0;
    int returns = 0;

    void Open() override { ++opened; }
    void BeginRun() override {}
    void OpenCenterPage() override { ++centerPageOpened; }
    void OpenPage(int) override { ++opened; }
    bool ReadCalCenter() override {
        ++centerReads;
        return readsCenter;
    }
    void ShowCenter() override { ++centerShown; }
    bool ReadCalCenterFromFolderOf(const Path& configuration) override {
        configurationRead = configuration;
        return true;
    }
    void AllowCalibration() override {}
    void SetReviewChoices(bool reviewMode) override { reviewChoices = reviewMode; }
    void RefreshFromRun() override {}
    void TriggerLevelMeasured() override { ++triggerLevels; }
    void NumberOfDropsMeasured() override { ++numbersOfDrops; }
    void ReturnFromMeasurement() override { ++returns; }
};

/// Replaces all analog input.
struct FakeAcquisition : AcquisitionDoor {
    bool hardware = true;
    float volts = 0;           ///< of every single conversion
    std::vector<float> block;  ///< delivered by a capture
    bool captured = true;      ///< the block is complete at once
    std::string problem;
    int aborts = 0;
    int conversions = 0;
    bool unloaded = false;

    std::string FindBoard() override { return hardware ? "KUSB-3100" : "Simulator"; }
    bool HasHardware() const override { return hardware; }
    bool BoardAvailable() override { return true; }
    std::string CaptureProblem() const override { return problem; }
    void InitializeBoard() override {}
    void ShowDAQ(bool) override {}
    float OneConversion(int) override {
        ++conversions;
        return volts;
    }
    int DAQWaitforButton(int) override { return 0; }
    void CaptureBlock(int) override {}
    bool BlockCaptured() override { return captured; }
    void GetResultsVolts(std::vector<float>& samples, int& count) override {
        std::copy(block.begin(), block.end(), samples.begin());
        count = static_cast<int>(block.size());
    }
    void AbortAcquisition() override { ++aborts; }
    int CurrentChannelType() const override { return 1; }
    void SetCurrentChannelType(int) override {}
    int TriggerThreshold() const override { return 0; }
    void SetTriggerThreshold(int) override {}
    void Unload() override { unloaded = true; }
};

/// Replaces the simulated board, and keeps what it was asked to serve.
struct FakeSimulator : SimulatorDoor {
    std::string file;
    void SetFile(const std::string& baseName) override { file = baseName; }
    void SetRandom(float, float) override {}
};

}  // namespace bellmark
