// An operator's way through the real widgets: from the start form to a drop that was taken.

#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>
#include <QTimer>
#include <QtTest/QTest>
#include <fstream>

#include "controls/control.h"
#include "tests/screens/test_desktop.h"
#include "virtual_fwd/virtual_center.h"

namespace bellmark {
namespace {

using namespace std::chrono_literals;

class WalkTest : public testing::Test {
  protected:
    explicit WalkTest(std::chrono::milliseconds simulatedCapture = 0ms) : desktop_(simulatedCapture) {
        DiskFileSystem files;
        virtual_fwd::WriteCenter(files, desktop_.Folder(), {}, MakeDateTime(2012, 3, 9, 10));
        std::ofstream(desktop_.Folder() / "Ferrylink.exe") << "stand-in";
        desktop_.Start();
    }

    void Press(const char* screen, const char* button) {
        QWidget& widget = desktop_.WidgetOf(screen, button);
        ASSERT_TRUE(widget.isVisible() && widget.isEnabled()) << screen << '.' << button;
        EXPECT_EQ(desktop_.window->size(), QSize(1280, 800)) << screen << " needs more room";
        QTest::mouseClick(&widget, Qt::LeftButton);
    }

    void GoToCollection() {
        desktop_.dialogs.answers = {Answer::OK};
        desktop_.dialogs.files = {desktop_.Folder() / "Review" / "BellmarkCenterConfig.ini"};
        Press("frmAbout", "cmdStartNewCal");
        ASSERT_EQ(Front(), "frmSetup");
        Press("frmSetup", "cmdMainMenu");
        ASSERT_EQ(Front(), "frmMainMenu");
        Press("frmMainMenu", "cmdCalLoadCell");
        ASSERT_EQ(Front(), "frmPrerequisites");
        for (int item = 0; item < 9; ++item) Press("frmPrerequisites", "cmdOK");
        Press("frmPrerequisites", "cmdNext");
        ASSERT_EQ(Front(), "frmBellmark_Accel");
    }

    std::string Front() const { return desktop_.program->Screens.Front()->Name(); }

    TestDesktop desktop_;
};

class SlowWalkTest : public WalkTest {
  protected:
    SlowWalkTest() : WalkTest(60s) {}
};

TEST_F(WalkTest, FromTheStartFormToADropThatIsTaken) {
    GoToCollection();
    Press("frmBellmark_Accel", "cmdNext");
    ASSERT_EQ(Front(), "frmBellmark_AccelDrop");
    // The true peak is 6025 pounds, as TruePeaks.txt of the imaginary center tells; its noise adds 3.
    EXPECT_EQ(dynamic_cast<QLabel&>(desktop_.WidgetOf("frmBellmark_AccelDrop", "lblPeakMils")).text(), "6,028");
    EXPECT_EQ(desktop_.window->focusWidget(), &desktop_.WidgetOf("frmBellmark_AccelDrop", "cmdAccept"));

    QTest::keyClick(&desktop_.WidgetOf("frmBellmark_AccelDrop", "cmdAccept"), Qt::Key_Return);
    ASSERT_EQ(Front(), "frmBellmark_Accel");
    EXPECT_EQ(dynamic_cast<QLineEdit&>(desktop_.WidgetOf("frmBellmark_Accel", "txtData(0)")).text(), "6,028");
    EXPECT_EQ(desktop_.TextOf("frmBellmark_Accel", "lblDropNumber"), "2");
    EXPECT_EQ(desktop_.refusals, std::vector<std::string>());
}

TEST_F(SlowWalkTest, TheArmedScreenSaysSoAndCanBeLeft) {
    GoToCollection();
    bool looked = false;
    QTimer::singleShot(50ms, [&] {
        looked = true;
        const Screen& drop = *desktop_.program->Screens.Find("frmBellmark_AccelDrop");
        EXPECT_EQ(drop.BackColor(), colors::complete);
        auto& state = dynamic_cast<QLabel&>(desktop_.WidgetOf("frmBellmark_AccelDrop", "lblState"));
        EXPECT_EQ(state.text(), "Ready: drop now");
        EXPECT_TRUE(state.isVisible());
        EXPECT_EQ(desktop_.window->PageOf(*desktop_.program->Screens.Front())->SuggestedStep(), QString());
        EXPECT_FALSE(desktop_.WidgetOf("frmBellmark_AccelDrop", "cmdAccept").isEnabled());
        Press("frmBellmark_AccelDrop", "cmdMainMenu");
    });
    Press("frmBellmark_Accel", "cmdNext");
    EXPECT_TRUE(looked);
    EXPECT_EQ(Front(), "frmMainMenu");
}

TEST_F(SlowWalkTest, ClosingTheWindowEndsTheWaitForADrop) {
    GoToCollection();
    desktop_.dialogs.answers = {Answer::Yes, Answer::Yes};
    QTimer::singleShot(50ms, [&] { desktop_.window->close(); });
    Press("frmBellmark_Accel", "cmdNext");
    EXPECT_TRUE(desktop_.ended);
}

}  // namespace
}  // namespace bellmark
