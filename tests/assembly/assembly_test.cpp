#include "assembly/assembly.h"

#include <gtest/gtest.h>

#include "app/app_main.h"
#include "app/doors.h"
#include "app/program.h"
#include "controls/controls.h"
#include "controls/screen.h"
#include "platform/numbers.h"
#include "tests/support/test_machine.h"

namespace bellmark {
namespace {

/// A whole program on its own machine, in a load cell trial of a cell of 1000 pounds per volt.
struct WholeProgram {
    TestMachine machine;
    std::unique_ptr<Program> program = AssembleProgram(machine.machine);

    explicit WholeProgram(int volts) {
        machine.Write("Ferrylink.exe", "");
        machine.Write("Review/LoadCell1_000.txt", PulseOf(volts));
        Main(*program);
        Run().CurrentProcedure = Procedure::LoadCell;
        Run().InterimFolderName = "InterimCal20120309";
        program->Center.ReferenceLoadCellUnits = poundForce;
        program->Center.ReferenceLoadCellCalibrationCoefficients = {1000, 0, 0, 0, 0};
        Run().SimDataLocation = machine.folder / "Review";
    }

    CalibrationRun& Run() { return program->Run; }

  private:
    static std::string PulseOf(int volts) {
        std::string text;
        for (int i = 0; i < 3000; ++i) {
            const int fromPeak = std::abs(i - 2000);
            text += NumberText(fromPeak < 20 ? volts * (20 - fromPeak) / 20.0 : 0) + ',';
        }
        return text;
    }
};

TEST(Assembly, TwoProgramsLiveSideBySide) {
    WholeProgram first(6);
    WholeProgram second(9);
    EXPECT_TRUE(first.Run().ReviewMode);
    first.program->Header.SetFWDOwnerName("First Agency");
    second.Run().EnglishUnits = false;
    first.program->The<DropDoor>().Start();
    second.program->The<DropDoor>().Start();
    EXPECT_EQ(first.program->Drop.PeakEnglish, 6000);
    EXPECT_EQ(second.program->Drop.PeakEnglish, 9000);
    first.Run().CurrentProcStep = step::loadCellTrial;
    EXPECT_EQ(second.Run().CurrentProcStep, step::none);
    EXPECT_EQ(dynamic_cast<CaptionedControl*>(second.program->Screens.Find("frmMainMenu")->Find("FWDOwnerName"))
                  ->Caption.Get()
                  .find("First"),
              std::string::npos);
    EXPECT_TRUE(first.machine.Has("InterimCal20120309/LoadCell1-H1D1.txt"));
    EXPECT_TRUE(second.machine.Has("InterimCal20120309/LoadCell1-H1D1.txt"));

    QuitApplication(*first.program);
    EXPECT_TRUE(first.machine.ended);
    EXPECT_FALSE(second.machine.ended);
    EXPECT_STREQ(second.program->Screens.Front()->Name().c_str(), "frmBellmark_AccelDrop");
}

/// Every control of every screen has a unique name, by which scripts and forms find it.
TEST(Assembly, ScreensAreMadeOnceAndFoundByName) {
    WholeProgram whole(6);
    Program& program = *whole.program;
    program.The<CollectionDoor>();
    program.The<DropDoor>();
    program.The<PrerequisitesDoor>();
    EXPECT_EQ(&program.The<DropDoor>(), &program.The<DropDoor>());
    EXPECT_GE(program.Screens.Screens().size(), 8U);
    for (const Screen* screen : program.Screens.Screens()) {
        EXPECT_EQ(program.Screens.Find(screen->Name()), screen);
        for (Control* control : screen->Controls()) EXPECT_EQ(screen->Find(control->Name()), control);
    }
}

}  // namespace
}  // namespace bellmark
