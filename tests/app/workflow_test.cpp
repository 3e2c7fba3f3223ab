// Where the program returns to, by procedure and step. Every door is a fake that records its calls.
#include "app/workflow.h"

#include <gtest/gtest.h>

#include "app/doors.h"
#include "app/program.h"
#include "platform/numbers.h"
#include "tests/support/idle_doors.h"
#include "tests/support/test_machine.h"

namespace bellmark {
namespace {

using Went = std::vector<std::string>;

struct Fakes {
    Went went;
    bool prerequisitesMet = true;
};

struct RecordingSetup : FakeSetup {
    explicit RecordingSetup(Fakes& owner) : fakes(owner) {}
    void OpenPage(int step) override { fakes.went.push_back("page " + std::to_string(step)); }
    Fakes& fakes;
};

struct RecordingCollection : IdleCollection {
    explicit RecordingCollection(Fakes& owner) : fakes(owner) {}
    void Bellmark() override { fakes.went.push_back("drops"); }
    void DisableButtons() override { fakes.went.push_back("no drops"); }
    Fakes& fakes;
};

struct RecordingDrop : IdleDrop {
    explicit RecordingDrop(Fakes& owner) : fakes(owner) {}
    void DisableButtons() override { fakes.went.push_back("no answer"); }
    Fakes& fakes;
};

struct RecordingPrerequisites : IdlePrerequisites {
    explicit RecordingPrerequisites(Fakes& owner) : fakes(owner) {}
    bool PrerequisitesMet(Procedure procedure) override {
        fakes.went.push_back("check " + NumberText(static_cast<int>(procedure)));
        return fakes.prerequisitesMet;
    }
    Fakes& fakes;
};

struct RecordingMenu : IdleMainMenu {
    explicit RecordingMenu(Fakes& owner) : fakes(owner) {}
    void Open() override { fakes.went.push_back("menu"); }
    Fakes& fakes;
};

struct RecordingFlip : FlipCalibrationDoor {
    explicit RecordingFlip(Fakes& owner) : fakes(owner) {}
    void Start() override { fakes.went.push_back("flip"); }
    Fakes& fakes;
};

struct RecordingResults : IdleResults {
    explicit RecordingResults(Fakes& owner) : fakes(owner) {}
    void OpenAccelerometer() override { fakes.went.push_back("accelerometer results"); }
    Fakes& fakes;
};

struct RecordingTrigger : TriggerDoor {
    explicit RecordingTrigger(Fakes& owner) : fakes(owner) {}
    void LoadStart() override { fakes.went.push_back("trigger"); }
    void NumDropsStart(int drop) override { fakes.went.push_back("drop count " + std::to_string(drop)); }
    Fakes& fakes;
};

struct RecordingCenterRelative : IdleCenterRelative {
    explicit RecordingCenterRelative(Fakes& owner) : fakes(owner) {}
    void Start() override { fakes.went.push_back("stand"); }
    Fakes& fakes;
};

struct RecordingRelative : RelativeDoor {
    explicit RecordingRelative(Fakes& owner) : fakes(owner) {}
    void Start() override {}
    void SetupMonthly() override { fakes.went.push_back("monthly"); }
    void SetupGeophone() override { fakes.went.push_back("replacement"); }
    Fakes& fakes;
};

struct RecordingRelativeResults : RelativeResultsDoor {
    explicit RecordingRelativeResults(Fakes& owner) : fakes(owner) {}
    bool Start() override { return true; }
    void Open() override { fakes.went.push_back("relative results"); }
    void OpenNext() override { fakes.went.push_back("next relative results"); }
    Fakes& fakes;
};

struct Case {
    int procedure;
    int step;
    bool met;
    Went went;
    int stepAfter;
};

class Workflow : public testing::Test {
  protected:
    template <class Door, class Recording>
    void Put() {
        program.Register<Door>([this](Program&) { return std::make_shared<Recording>(fakes); });
    }

    Workflow() {
        Put<SetupDoor, RecordingSetup>();
        Put<CollectionDoor, RecordingCollection>();
        Put<DropDoor, RecordingDrop>();
        Put<PrerequisitesDoor, RecordingPrerequisites>();
        Put<MainMenuDoor, RecordingMenu>();
        Put<FlipCalibrationDoor, RecordingFlip>();
        Put<ResultsDoor, RecordingResults>();
        Put<TriggerDoor, RecordingTrigger>();
        Put<CenterRelativeDoor, RecordingCenterRelative>();
        Put<RelativeDoor, RecordingRelative>();
        Put<RelativeResultsDoor, RecordingRelativeResults>();
        // The accelerometer was calibrated just now, at the temperature that a review reads.
        program.Run.ReviewMode = true;
        program.Center.AccelDailyCalibrationTemperatureUnit = "Celsius";
        program.Center.AccelDailyCalibrationDate = program.Now();
        program.Center.AccelDailyCalibrationTime = program.Now();
    }

    Fakes fakes;
    TestMachine machine;
    Program program{machine.machine};
};

TEST_F(Workflow, EachProcedureIsEnteredAgainAtItsStep) {
    const Case cases[] = {
        {1, 11, true, {"page 11"}, 11},
        {1, 12, true, {"page 12"}, 12},
        {1, 13, true, {"page 13"}, 13},
        {1, 32, true, {"flip"}, 32},
        {1, 15, true, {}, 15},
        {2, 0, true, {"drops"}, 0},
        {3, 32, true, {"flip"}, 32},
        {3, 33, true, {}, 33},
        {3, 39, true, {"accelerometer results", "menu"}, 39},
        {3, 31, true, {"menu"}, 31},
        {4, 40, true, {"check 4", "drops"}, 42},
        {4, 41, true, {"check 4", "drops"}, 41},
        {4, 41, false, {"check 4"}, 41},
        {4, 33, true, {"drops"}, 42},
        {4, 42, true, {"drops"}, 42},
        {4, 43, true, {}, 43},
        {4, 44, true, {"stand"}, 44},
        {5, 51, true, {"drops"}, 51},
        {5, 53, true, {"drops"}, 53},
        {6, 60, true, {"monthly"}, 60},
        {6, 61, true, {"monthly"}, 61},
        {6, 62, true, {"relative results"}, 62},
        {6, 63, true, {"next relative results"}, 63},
        {6, 69, true, {"menu"}, 69},
        {7, 70, true, {"replacement"}, 70},
        {7, 72, true, {"relative results"}, 72},
        {7, 73, true, {"next relative results"}, 73},
        {7, 79, true, {"menu"}, 79},
        {8, 81, true, {"check 8", "trigger"}, 82},
        {8, 81, false, {"check 8"}, 81},
        {8, 82, true, {"trigger"}, 82},
        {8, 83, true, {"trigger"}, 83},
        {9, 91, true, {"check 9", "drop count 1"}, 93},
        {9, 91, false, {"check 9"}, 91},
        {9, 92, true, {"drop count 1"}, 92},
        {10, 101, true, {}, 101},
        {0, 0, true, {}, 0},
    };
    for (const auto& c : cases) {
        fakes.went.clear();
        fakes.prerequisitesMet = c.met;
        program.Run.CurrentProcedure = static_cast<Procedure>(c.procedure);
        program.Run.CurrentProcStep = c.step;
        ReturnToProcedure(program, program.Run.CurrentProcedure);
        EXPECT_EQ(fakes.went, c.went) << c.procedure << ", " << c.step;
        EXPECT_EQ(program.Run.CurrentProcStep, c.stepAfter) << c.procedure << ", " << c.step;
    }
}

TEST_F(Workflow, SensorDropsWaitForAnAccelerometerThatHolds) {
    program.Run.CurrentProcStep = 42;
    program.Center.AccelDailyCalibrationDate -= std::chrono::days(1);
    ReturnToProcedure(program, Procedure::Sensors);
    EXPECT_EQ(fakes.went, (Went{"no drops", "no answer", "flip"}));
}

TEST_F(Workflow, ReferenceTrialsComeInPairsUntilTheyAreAccepted) {
    const std::array<std::array<int, 2>, 5> steps{{{41, 44}, {41, 44}, {42, 44}, {41, 44}, {42, 44}}};
    for (int trials = 0; trials <= 4; ++trials) {
        EXPECT_EQ(SensorStep(trials, false), steps[static_cast<std::size_t>(trials)][0]) << trials;
        EXPECT_EQ(SensorStep(trials, true), steps[static_cast<std::size_t>(trials)][1]) << trials;
    }
}

}  // namespace
}  // namespace bellmark
