// The forms of all screens of the assembled program, in the real window.

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QStackedWidget>
#include <QTableWidget>
#include <QtTest/QTest>
#include <fstream>
#include <map>

#include "controls/controls.h"
#include "screens/binder.h"
#include "screens/fitted_label.h"
#include "screens/page.h"
#include "screens/state_button.h"
#include "tests/screens/test_desktop.h"

namespace bellmark {
namespace {

class FormsTest : public testing::Test {
  protected:
    FormsTest() {
        desktop_.Start();
        MakeAllScreens(*desktop_.program);
    }

    std::vector<Screen*> Screens() const {
        std::vector<Screen*> screens;
        for (Screen* screen : desktop_.program->Screens.Screens()) {
            if (!screen->IsAlwaysAtHand()) screens.push_back(screen);
        }
        return screens;
    }

    TestDesktop desktop_;
};

TEST_F(FormsTest, EveryControlHasItsWidgetAndEveryNamedWidgetItsControl) {
    const auto& menu = desktop_.window->MenuBindings().Report();
    EXPECT_TRUE(menu.IsClean()) << menu.Text().toStdString();
    for (Screen* screen : Screens()) {
        const Page* page = desktop_.window->PageOf(*screen);
        ASSERT_NE(page, nullptr) << screen->Name() << " has no form";
        EXPECT_TRUE(page->Bindings().Report().IsClean()) << screen->Name() << '\n'
                                                         << page->Bindings().Report().Text().toStdString();
    }
}

/// The control of the innermost frame in the form around the widget.
const Control* FrameAround(const Page& page, const QWidget& widget) {
    for (const QWidget* outer = widget.parentWidget(); outer && outer != &page; outer = outer->parentWidget()) {
        for (const Control* control : page.Shown().Controls()) {
            const bool isFrame = dynamic_cast<const Frame*>(control) && page.Bindings().WidgetOf(*control) == outer;
            if (isFrame) return control;
        }
    }
    return nullptr;
}

TEST_F(FormsTest, AControlIsHiddenWithTheSameFrameInTheFormAsInTheLogic) {
    for (Screen* screen : Screens()) {
        const Page& page = *desktop_.window->PageOf(*screen);
        for (const Control* control : screen->Controls()) {
            const QWidget* widget = page.Bindings().WidgetOf(*control);
            if (!widget) continue;
            EXPECT_EQ(control->LiesIn(), FrameAround(page, *widget)) << control->FullName();
        }
    }
}

/// Text that does not fit into its widget.
QStringList CutOff(const QWidget& page) {
    QStringList cut;
    for (const auto* button : page.findChildren<StateButton*>()) {
        if (button->isVisible() && button->width() < button->sizeHint().width()) cut.push_back(button->objectName());
    }
    for (const auto* label : page.findChildren<QLabel*>()) {
        const bool fitsItself = label->wordWrap() || qobject_cast<const FittedLabel*>(label);
        if (label->isVisible() && !fitsItself && label->width() < label->sizeHint().width())
            cut.push_back(label->objectName());
    }
    for (const auto* line : page.findChildren<QLineEdit*>()) {
        const int text = line->fontMetrics().horizontalAdvance(line->text().trimmed());
        if (line->isVisible() && line->isReadOnly() && line->width() - 10 < text) cut.push_back(line->objectName());
    }
    return cut;
}

TEST_F(FormsTest, NothingIsCutOffOnTheSmallestDisplay) {
    for (Screen* screen : Screens()) {
        screen->Show();
        desktop_.window->resize(1280, 720);
        QTest::qWait(5);
        EXPECT_EQ(desktop_.window->size(), QSize(1280, 720)) << screen->Name() << " needs more room";
        const Page& page = *desktop_.window->PageOf(*screen);
        EXPECT_EQ(CutOff(page).join(QLatin1Char(' ')).toStdString(), "") << screen->Name();
        // Whatever is scrolled, the way on and the way out are in sight.
        for (const char* name : {"cmdNext", "cmdAccept", "cmdMainMenu"}) {
            const Control* button = screen->Find(name);
            if (!button || !button->Visible || button->LiesIn()) continue;
            const QWidget& widget = *page.Bindings().WidgetOf(*button);
            EXPECT_EQ(widget.visibleRegion().boundingRect(), widget.rect()) << button->FullName();
        }
    }
}

TEST_F(FormsTest, TheKeyboardNeverLandsOnReject) {
    int rejects = 0;
    for (Screen* screen : Screens()) {
        const Control* reject = screen->Find("cmdReject");
        if (!reject) continue;
        ++rejects;
        EXPECT_EQ(desktop_.WidgetOf(screen->Name(), "cmdReject").focusPolicy(), Qt::NoFocus) << screen->Name();
    }
    EXPECT_GT(rejects, 0);
}

TEST_F(FormsTest, EnterPressesTheSuggestedStep) {
    Screen& start = *desktop_.program->Screens.Find("frmAbout");
    start.Show();
    int pressed = 0;
    dynamic_cast<Button&>(*start.Find("cmdStartNewCal")).Click = [&pressed] { ++pressed; };
    QWidget& button = desktop_.WidgetOf("frmAbout", "cmdStartNewCal");
    QTest::keyClick(&button, Qt::Key_Return);
    QTest::keyClick(desktop_.window->PageOf(start), Qt::Key_Enter);
    EXPECT_EQ(pressed, 2);
    EXPECT_TRUE(dynamic_cast<StateButton&>(button).IsSuggested());
}

TEST_F(FormsTest, EnterInAListActsOnItsRowAndNothingElse) {
    Screen& start = *desktop_.program->Screens.Find("frmAbout");
    start.Show();
    int pressed = 0;
    int clicked = 0;
    dynamic_cast<Button&>(*start.Find("cmdStartNewCal")).Click = [&pressed] { ++pressed; };
    dynamic_cast<Frame&>(*start.Find("fraInterimCals")).Visible = true;
    auto& list = dynamic_cast<Grid&>(*start.Find("grdInterim"));
    list.AddRow({"InterimCal20120309.DDX", "03-09-2012"});
    list.CellDoubleClick = [&clicked](int row, int) { clicked += row; };
    QTest::qWait(5);
    QWidget& view = desktop_.WidgetOf("frmAbout", "grdInterim");
    view.setFocus();
    QTest::keyClick(&view, Qt::Key_Down);
    QTest::keyClick(&view, Qt::Key_Return);
    EXPECT_EQ(clicked, 1);
    EXPECT_EQ(pressed, 0);
}

TEST_F(FormsTest, EnterAndDoubleClickOpenTheMarkedRun) {
    const std::string run =
        "[Operations Information]\r\nEndDate=03-08-2012\r\nEndTime=14:05\r\n"
        "[Device Calibration]\r\nLoadCellRefTrials=2\r\nRelTrials=1\r\n";
    std::ofstream(desktop_.Folder() / "InterimCal20120308.DDX") << run;
    auto& start = desktop_.program->The<StartFormDoor>();
    auto& list = dynamic_cast<Grid&>(*desktop_.program->Screens.Find("frmAbout")->Find("grdInterim"));
    QWidget& open = desktop_.WidgetOf("frmAbout", "cmdOpenInterimCal");
    start.ShowStart();
    QTest::qWait(5);
    EXPECT_EQ(list.SelectedRow, 1) << "the only row";
    EXPECT_TRUE(dynamic_cast<StateButton&>(open).IsSuggested());
    EXPECT_EQ(list.Cell(1, 4), "2 load cell, 1 relative");
    EXPECT_EQ(list.Cell(1, 5), "03-08-2012 14:05");

    std::ofstream(desktop_.Folder() / "InterimCal20120309.DDX") << run;
    start.ShowStart();
    QTest::qWait(5);
    EXPECT_FALSE(open.isEnabled());
    EXPECT_EQ(open.toolTip(), "Choose a calibration in the list first.");
    auto& view = dynamic_cast<QTableWidget&>(desktop_.WidgetOf("frmAbout", "grdInterim"));
    desktop_.dialogs.answers = {Answer::No, Answer::No};
    view.setFocus();
    view.setCurrentCell(1, 0);
    QTest::keyClick(&view, Qt::Key_Return);
    ASSERT_EQ(desktop_.dialogs.shown.size(), 1U);
    EXPECT_NE(desktop_.dialogs.shown[0].text.find("InterimCal20120309.DDX"), std::string::npos);
    const QPoint first = view.visualRect(view.model()->index(0, 1)).center();
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, first);
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, first);
    QTest::qWait(5);
    ASSERT_EQ(desktop_.dialogs.shown.size(), 2U);
    EXPECT_NE(desktop_.dialogs.shown[1].text.find("InterimCal20120308.DDX"), std::string::npos);
}

TEST_F(FormsTest, AFileDroppedOnTheFWDDataScreenIsBrowsed) {
    Screen& screen = *desktop_.program->Screens.Find("frmGetFWDData");
    int browsed = 0;
    dynamic_cast<Button&>(*screen.Find("cmdBrowse")).Click = [&browsed] { ++browsed; };
    Path given;
    desktop_.window->OnFile([&](const Path& file, const std::function<void()>& action) {
        given = file;
        action();
    });
    const auto drop = [&] {
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(QStringLiteral("/a/Trial1.F25"))});
        QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        enter.ignore();
        QApplication::sendEvent(desktop_.window.get(), &enter);
        if (!enter.isAccepted()) return false;
        QDropEvent event(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(desktop_.window.get(), &event);
        return true;
    };
    EXPECT_FALSE(drop()) << "not on the start form";
    screen.Show();
    EXPECT_TRUE(drop());
    EXPECT_EQ(given, Path("/a/Trial1.F25"));
    EXPECT_EQ(browsed, 1);
}

TEST_F(FormsTest, LettersOfLabelsLeadToTheirFields) {
    int labels = 0;
    for (Screen* screen : Screens()) {
        const Page& page = *desktop_.window->PageOf(*screen);
        std::map<QString, QString> owners;
        for (const auto* label : page.findChildren<QLabel*>()) {
            const QString keys = label->buddy() ? QKeySequence::mnemonic(label->text()).toString() : QString();
            if (keys.isEmpty()) continue;
            ++labels;
            EXPECT_TRUE(owners.emplace(keys, label->text()).second) << screen->Name() << ' ' << keys.toStdString();
        }
        for (const auto* button : page.findChildren<StateButton*>()) {
            EXPECT_FALSE(owners.count(QKeySequence::mnemonic(button->text()).toString())) << screen->Name();
        }
    }
    EXPECT_GT(labels, 5);
}

TEST_F(FormsTest, TheCloseBoxAsksAndDestroysNothing) {
    desktop_.dialogs.answers = {Answer::No, Answer::Yes};
    EXPECT_FALSE(desktop_.window->close());
    EXPECT_FALSE(desktop_.ended);
    EXPECT_EQ(desktop_.dialogs.shown.back().text, "Are you sure you want to terminate the FWD Calibration software?");
    EXPECT_FALSE(desktop_.window->close());
    EXPECT_TRUE(desktop_.ended);
    EXPECT_TRUE(desktop_.window->isVisible());
}

}  // namespace
}  // namespace bellmark
