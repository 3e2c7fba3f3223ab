// An operator's way through the real widgets: from the start form to an accepted drop, and on to the certificate.

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QTextBrowser>
#include <QTimer>
#include <QtTest/QTest>
#include <filesystem>
#include <fstream>
#include <map>

#include "controls/control.h"
#include "platform/numbers.h"
#include "tests/monthly/monthly_files.h"
#include "tests/screens/test_desktop.h"
#include "virtual_fwd/virtual_center.h"

namespace bellmark {
namespace {

using namespace std::chrono_literals;

class WalkTest : public testing::Test {
  protected:
    explicit WalkTest(std::chrono::milliseconds simulatedCapture = 0ms, std::chrono::milliseconds restOfAccept = 0ms)
        : desktop_(simulatedCapture) {
        DiskFileSystem files;
        virtual_fwd::WriteCenter(files, desktop_.Folder(), {}, SystemClock().Now());
        std::ofstream(desktop_.Folder() / "Ferrylink.exe") << "stand-in";
        desktop_.Start(restOfAccept);
    }

    void Press(const char* screen, const char* button) {
        QWidget& widget = desktop_.WidgetOf(screen, button);
        ASSERT_TRUE(widget.isVisible() && widget.isEnabled()) << screen << '.' << button;
        EXPECT_EQ(desktop_.window->size(), QSize(1280, 800)) << screen << " needs more room";
        ExpectDistinctLetters();
        QTest::mouseClick(&widget, Qt::LeftButton);
    }

    /// Presses Enter at the current keyboard focus, like an operator who follows the suggestions.
    void PressEnter() {
        ExpectDistinctLetters();
        QWidget* focused = desktop_.window->focusWidget();
        ASSERT_TRUE(focused) << Front() << " leaves the keyboard nowhere";
        QTest::keyClick(focused, Qt::Key_Return);
    }

    void FollowSuggestionsTo(const char* screen, int mostSteps) {
        for (int step = 0; step < mostSteps && Front() != screen; ++step) PressEnter();
        ASSERT_EQ(Front(), screen);
    }

    /// Alt with a letter must have only one meaning.
    void ExpectDistinctLetters() {
        QApplication::processEvents();
        std::map<QString, QString> captions;
        const auto meet = [&](const QString& caption) {
            const QString letter = QKeySequence::mnemonic(caption).toString();
            const auto [met, isNew] = captions.emplace(letter, caption);
            EXPECT_TRUE(isNew || letter.isEmpty())
                << Front() << ": " << met->second.toStdString() << ", " << caption.toStdString();
        };
        for (const QAction* item : desktop_.window->menuBar()->actions()) meet(item->text());
        for (const auto* button : desktop_.window->findChildren<QAbstractButton*>()) {
            if (button->isVisible() && button->isEnabled()) meet(button->text());
        }
    }

    void SetUpANewCalibration() {
        desktop_.dialogs.answers = {Answer::OK};
        desktop_.dialogs.files = {desktop_.Folder() / "BellmarkCenterConfig.ini"};
        PressEnter();
        ASSERT_EQ(Front(), "frmSetup");
        PressEnter();  // the center is approved
        desktop_.dialogs.inputs = {"Sample Road Agency", "8002-101"};
        Press("frmSetup", "cmdNewOwner");
        Press("frmSetup", "cmdNewFWD");
        QTest::keyClick(&desktop_.WidgetOf("frmSetup", "cboFWDMfg"), Qt::Key_Down);
        desktop_.dialogs.files = {desktop_.Folder() / "FWD" / "Configuration.ddx"};
        Press("frmSetup", "cmdReadFWDConfig");
        EXPECT_EQ(desktop_.window->focusWidget(), &desktop_.WidgetOf("frmSetup", "cmdNext"));
        Press("frmSetup", "optDataAcq");
        auto& drops = dynamic_cast<QLineEdit&>(desktop_.WidgetOf("frmSetup", "txtSimDataLocation"));
        drops.setFocus();
        drops.selectAll();
        QTest::keyClicks(&drops, QString::fromStdString(PathText(desktop_.Folder() / "Review")));
        QTest::keyClick(&drops, Qt::Key_Tab);
        Press("frmSetup", "cmdNext");
        desktop_.dialogs.answers = {Answer::Yes};
        Press("frmSetup", "cmdApproveCalSeq");
        PressEnter();
        ASSERT_EQ(Front(), "frmMainMenu");
    }

    void TakeTrial(const char* fwdFile) {
        FollowSuggestionsTo("frmGetFWDData", 64);
        desktop_.dialogs.files = {desktop_.Folder() / "FWD" / fwdFile};
        PressEnter();
        PressEnter();
        ASSERT_EQ(Front(), "frmRegressionPlot");
        PressEnter();
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

TEST_F(WalkTest, AMonthlyCalibrationGoesFromSuggestionToSuggestion) {
    Press("frmAbout", "cmdRelativeCal");
    ASSERT_EQ(Front(), "frmRelative");
    QTest::keyClick(desktop_.window->focusWidget(), Qt::Key_Space);
    MonthlyFile file;
    file.ratios = {1, 1, 1.01};
    for (int trial = 1; trial <= 2; ++trial) {
        file.seed = trial;
        desktop_.dialogs.files = {desktop_.Folder() / "FWD" / "Monthly.ddx"};
        DiskFileSystem().ReplaceFile(desktop_.dialogs.files.front(), file.Text());
        PressEnter();  // browse
        PressEnter();
        ASSERT_EQ(Front(), "frmRelResults");
        PressEnter();
        ASSERT_EQ(Front(), "frmCenterRelPlot");
        PressEnter();
        EXPECT_EQ(desktop_.window->size(), QSize(1280, 800));
        QTest::keyClick(&desktop_.WidgetOf("frmRelResults", "chkANOVA"), Qt::Key_Space);
        EXPECT_TRUE(desktop_.WidgetOf("frmRelResults", "fraANOVA").isVisible());
        PressEnter();  // accepts
    }
    FollowSuggestionsTo("frmMainMenu", 1);
    EXPECT_EQ(desktop_.dialogs.shown.back().title, "Update Gain Factors in FWD (171)");
    EXPECT_FALSE(desktop_.WidgetOf("frmMainMenu", "cmdCalLoadCell").isVisible());
    FollowSuggestionsTo("frmAbout", 1);
    // A sensor is marked in the list.
    Press("frmAbout", "cmdRelativeCal");
    QTest::keyClick(&desktop_.WidgetOf("frmRelative", "optMonthlyReplace"), Qt::Key_Space);
    QApplication::processEvents();
    QWidget* list = desktop_.window->focusWidget();
    EXPECT_EQ(list, &desktop_.WidgetOf("frmRelative", "grdSerialNum"));
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_EQ(desktop_.program->Run.ReplacedSensor, 1U);
}

class SlowWalkTest : public WalkTest {
  protected:
    SlowWalkTest() : WalkTest(60s) {}
};

class HastyWalkTest : public WalkTest {
  protected:
    HastyWalkTest() : WalkTest(0ms, 2000ms) {}
};

TEST_F(HastyWalkTest, AHeldEnterOrAnEarlyOneTakesNoDrop) {
    GoToCollection();
    Press("frmBellmark_Accel", "cmdNext");
    ASSERT_EQ(Front(), "frmBellmark_AccelDrop");
    PressEnter();
    EXPECT_EQ(Front(), "frmBellmark_AccelDrop") << "pressed before anyone can have seen the peak";
    QTest::qWait(2100);
    for (int i = 0; i < 3; ++i) {
        QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, {}, true);
        QApplication::sendEvent(desktop_.window->focusWidget(), &held);
    }
    EXPECT_EQ(Front(), "frmBellmark_AccelDrop");
    PressEnter();
    EXPECT_EQ(Front(), "frmBellmark_Accel");
}

TEST_F(WalkTest, FromTheStartFormToADropThatIsTaken) {
    GoToCollection();
    Press("frmBellmark_Accel", "cmdNext");
    ASSERT_EQ(Front(), "frmBellmark_AccelDrop");
    // The true peak is 6025 pounds, by TruePeaks.txt of the imaginary center; its noise adds 3.
    EXPECT_EQ(dynamic_cast<QLabel&>(desktop_.WidgetOf("frmBellmark_AccelDrop", "lblPeakMils")).text(), "6,028");
    EXPECT_EQ(desktop_.window->focusWidget(), &desktop_.WidgetOf("frmBellmark_AccelDrop", "cmdAccept"));

    QTest::keyClick(&desktop_.WidgetOf("frmBellmark_AccelDrop", "cmdAccept"), Qt::Key_Return);
    ASSERT_EQ(Front(), "frmBellmark_Accel");
    EXPECT_EQ(dynamic_cast<QLineEdit&>(desktop_.WidgetOf("frmBellmark_Accel", "txtData(0)")).text(), "6,028");
    EXPECT_EQ(desktop_.TextOf("frmBellmark_Accel", "lblDropNumber"), "2");
    EXPECT_EQ(desktop_.refusals, std::vector<std::string>());
}

TEST_F(WalkTest, FromANewCalibrationToTheCertificate) {
    std::ofstream(desktop_.Folder() / "CertificateTemplate.rtf") << "{\\rtf1\\viewkind4 Gain LCFin of CalibrationDate}";
    const Path converter = "Ferrylink.exe";
    std::filesystem::copy_file(Path(BELLMARK_SOURCE_FOLDER) / "sample" / converter, desktop_.Folder() / converter,
                               std::filesystem::copy_options::overwrite_existing);
    SetUpANewCalibration();
    TakeTrial("Trial1.ddx");
    TakeTrial("Trial2.ddx");
    ASSERT_EQ(Front(), "frmResults");
    EXPECT_EQ(desktop_.TextOf("frmResults", "txtMsg"), "All data checks passed");
    // Enter and Escape belong to the frame that is open.
    for (const auto key : {Qt::Key_Return, Qt::Key_Escape}) {
        Press("frmResults", "cmdDelLCTrials");
        EXPECT_TRUE(desktop_.WidgetOf("frmResults", "cmdDelLCCancel").isVisible());
        QTest::keyClick(desktop_.window->focusWidget(), key);
        EXPECT_FALSE(desktop_.WidgetOf("frmResults", "fraDelLCTrails").isVisible());
        ASSERT_FALSE(desktop_.program->Run.LoadCellCalComplete);
    }
    Press("frmResults", "cmdAcceptLC");
    ASSERT_TRUE(desktop_.program->Run.LoadCellCalComplete);
    desktop_.dialogs.files = {desktop_.Folder() / "ForTheCenter.ddx", desktop_.Folder() / "ForTheFWD.ddx"};
    Press("frmResults", "optSummary");
    Press("frmResults", "cmdPrintPDDX(0)");
    ASSERT_EQ(Front(), "frmReport");

    const std::string truth = DiskFileSystem().ReadBytes(desktop_.Folder() / "FWD" / "TrueGains.txt");
    const std::string key = "TrueGain=";
    const double trueGain = ReadNumber(truth.substr(truth.find(key) + key.size()));
    const auto& sheet = dynamic_cast<const QTextBrowser&>(desktop_.WidgetOf("frmReport", "rtbReport"));
    const QStringList words = sheet.toPlainText().split(QLatin1Char(' '));
    ASSERT_GE(words.size(), 3);
    // The procedure requires two trials that agree within 0.003.
    EXPECT_NEAR(words[1].toDouble(), trueGain, 0.003);
    Press("frmReport", "cmdNext");
    ASSERT_EQ(Front(), "frmResults");
    // The load cell is finished, so its button would have no effect.
    Press("frmResults", "cmdMainMenu");
    ASSERT_EQ(Front(), "frmMainMenu");
    PressEnter();
    EXPECT_EQ(Front(), "frmResults");
    EXPECT_EQ(desktop_.refusals, std::vector<std::string>());
}

TEST_F(SlowWalkTest, TheArmedScreenSaysSoAndCanBeLeft) {
    GoToCollection();
    bool looked = false;
    const auto& setup = *desktop_.window->findChild<QAction*>("mnuSetup");
    // A busy machine may make and paint the drop screen slowly.
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [&] {
        if (Front() != "frmBellmark_AccelDrop" ||
            desktop_.TextOf("frmBellmark_AccelDrop", "lblState") != "Ready: drop now")
            return;
        look.stop();
        looked = true;
        const Screen& drop = *desktop_.program->Screens.Find("frmBellmark_AccelDrop");
        EXPECT_EQ(drop.BackColor(), colors::complete);
        EXPECT_TRUE(desktop_.WidgetOf("frmBellmark_AccelDrop", "lblState").isVisible());
        EXPECT_EQ(desktop_.window->PageOf(*desktop_.program->Screens.Front())->SuggestedStep(), QString());
        EXPECT_FALSE(desktop_.WidgetOf("frmBellmark_AccelDrop", "cmdAccept").isEnabled());
        EXPECT_FALSE(setup.isEnabled());
        Press("frmBellmark_AccelDrop", "cmdMainMenu");
    });
    look.start(20ms);
    Press("frmBellmark_Accel", "cmdNext");
    EXPECT_TRUE(looked);
    EXPECT_TRUE(setup.isEnabled());
    EXPECT_EQ(Front(), "frmMainMenu");
}

TEST_F(WalkTest, WhileSomethingIsWaitedForOnlyCancelIsLive) {
    auto& frame = desktop_.program->The<MainFrameDoor>();
    frame.BeginWaiting("Converting ...");
    EXPECT_FALSE(desktop_.WidgetOf("frmAbout", "cmdStartNewCal").isEnabled());
    EXPECT_FALSE(desktop_.window->menuBar()->isEnabled());
    EXPECT_EQ(desktop_.window->findChild<QLabel*>("decorNextStep")->text(), "");
    EXPECT_EQ(desktop_.window->cursor().shape(), Qt::BusyCursor);
    desktop_.window->close();
    EXPECT_TRUE(desktop_.dialogs.shown.empty());
    auto* cancel = desktop_.window->findChild<QAbstractButton*>("cmdCancelWaiting");
    QTest::mouseClick(cancel, Qt::LeftButton);
    EXPECT_TRUE(frame.WaitingCancelled());
    frame.EndWaiting();
    EXPECT_TRUE(desktop_.WidgetOf("frmAbout", "cmdStartNewCal").isEnabled());
    EXPECT_EQ(desktop_.window->cursor().shape(), Qt::ArrowCursor);
    EXPECT_EQ(desktop_.window->focusWidget(), &desktop_.WidgetOf("frmAbout", "cmdStartNewCal"));
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
