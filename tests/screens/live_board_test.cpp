// The demonstration board in the real window, in real time.

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QDockWidget>
#include <QLabel>
#include <chrono>
#include <filesystem>

#include "app/center_file.h"
#include "controls/controls.h"
#include "run/trial.h"
#include "tests/screens/test_desktop.h"
#include "virtual_fwd/live_drops.h"
#include "virtual_fwd/virtual_center.h"

namespace bellmark {
namespace {

void PrepareCenter(const Path& folder) {
    DiskFileSystem files;
    virtual_fwd::CenterOptions options;
    options.live = true;
    options.trials = 1;
    virtual_fwd::WriteCenter(files, folder, options, SystemClock().Now());
    auto drops = virtual_fwd::LiveDropsIn(files.ReadBytes(folder / virtual_fwd::liveDropsName));
    drops->secondsToDrop = 0.3;
    files.ReplaceFile(folder / virtual_fwd::liveDropsName, virtual_fwd::LiveDropsText(*drops));
}

class LiveBoardTest : public testing::Test {
  protected:
    LiveBoardTest() {
        desktop_.Start();
        Program& program = *desktop_.program;
        ReadCenterConfiguration(program, MasterCenterConfig(program));
        program.Run.InterimFolderName = "InterimCal20260309";
        program.Run.CurrentProcedure = Procedure::LoadCell;
        program.Run.NumberLoadLevels = 4;
        program.Run.NumberDropsPerLoadLevel = 6;
        BeginTrial(program.Run);
    }

    TestDesktop desktop_{{}, PrepareCenter};
};

TEST_F(LiveBoardTest, ItsScreensHaveTheirForms) {
    int seen = 0;
    for (Screen* screen : desktop_.program->Screens.Screens()) {
        if (!screen->IsAlwaysAtHand() || screen->Name() == "frmMaster") continue;
        ++seen;
        const BindingReport& report = desktop_.window->PageOf(*screen)->Bindings().Report();
        EXPECT_TRUE(report.IsClean()) << screen->Name() << '\n' << report.Text().toStdString();
    }
    EXPECT_EQ(seen, 2);
    EXPECT_TRUE(desktop_.window->findChild<QDockWidget*>("decorDock_frmDemonstration")->isVisible());
    EXPECT_FALSE(desktop_.window->findChild<QDockWidget*>("decorDock_frmKUSB")->isVisible());
}

/// The true peak is 6025 pounds; the noise adds a few.
TEST_F(LiveBoardTest, ADropIsMeasuredInRealTime) {
    auto& balance = dynamic_cast<QAbstractButton&>(desktop_.WidgetOf("frmDemonstration", "chkAutoBalance"));
    balance.click();
    ASSERT_TRUE(balance.isChecked());
    const auto armed = std::chrono::steady_clock::now();
    desktop_.program->The<DropDoor>().Start();
    QApplication::processEvents();
    // The block is as long as the flow was: what remains is from the last sample to the drawn and saved drop, and the
    // drawing of the armed screen.
    const std::chrono::duration<double, std::milli> all = std::chrono::steady_clock::now() - armed;
    RecordProperty("MillisecondsBesideTheSamples",
                   static_cast<int>(all.count()) - desktop_.program->Drop.NumSamples / 15);
    const auto& header = dynamic_cast<QLabel&>(desktop_.WidgetOf("frmBellmark_AccelDrop", "BoardName"));
    EXPECT_EQ(header.text(), "Demonstration board");
    EXPECT_EQ(desktop_.program->Drop.NumSamples % 500, 0);
    EXPECT_NEAR(desktop_.program->Drop.PeakEnglish, 6025, 25);
    EXPECT_TRUE(std::filesystem::exists(desktop_.Folder() / "InterimCal20260309" / "LoadCell1-H1D1.txt"));
    EXPECT_TRUE(desktop_.WidgetOf("frmBellmark_AccelDrop", "cmdAccept").isEnabled());
    EXPECT_EQ(desktop_.dialogs.shown.size(), 0U);
}

}  // namespace
}  // namespace bellmark
