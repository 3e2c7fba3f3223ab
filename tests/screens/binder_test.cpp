#include "screens/binder.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QTableWidget>
#include <QVBoxLayout>
#include <QtTest/QTest>

#include "controls/controls.h"
#include "controls/screen.h"
#include "controls/screen_stack.h"
#include "platform/clock.h"
#include "platform/timers.h"
#include "screens/state_button.h"

namespace bellmark {
namespace {

/// One control of each kind, and a record of what the user did.
class OneOfEach : public Screen {
  public:
    explicit OneOfEach(ScreenStack& stack) : Screen(stack, "frmTest", "Test") {
        for (Control* control : Controls()) {
            control->Click = [this, control] { acts += control->Name() + "! "; };
        }
        text.Leave = [this] { acts += "left "; };
        grid.SetHeadings({"No.", "Serial"});
        grid.AddRow({"1", "A"});
        grid.AddRow({"2", "B"});
        grid.SetEditable(1, 1, true);
        grid.CellClick = [this](int row, int column) {
            acts += std::to_string(row) + ',' + std::to_string(column) + ' ';
        };
        grid.CellEdit = [this](int row, int column, const std::string& typed) {
            acts += "edit ";
            if (typed != "refused") grid.SetCell(row, column, typed);
        };
        combo.Items = std::vector<std::string>{"five", "six"};
    }

    Button button{*this, "cmdGo", "&Go"};
    Label label{*this, "lblCell(2)", "label"};
    Frame frame{*this, "fraBox", "Box"};
    TextBox text{*this, "txtLine"};
    TextBox area{*this, "txtArea"};
    CheckBox check{*this, "chkOn", "On"};
    OptionButton first{*this, "optFirst", "group"};
    OptionButton second{*this, "optSecond", "group"};
    ComboBox combo{*this, "cboCount"};
    Grid grid{*this, "grdRows"};
    Timer timer{*this, "tmrAny", std::chrono::milliseconds(10)};
    std::string acts;
};

class BinderTest : public testing::Test {
  protected:
    BinderTest() {
        binder_ = Bind();
        form_.show();
        QTest::qWait(1);
    }

    template <class Widget>
    Widget& Add(const char* name) {
        auto* widget = new Widget(&form_);
        widget->setObjectName(QLatin1String(name));
        layout_.addWidget(widget);
        return *widget;
    }

    std::unique_ptr<Binder> Bind() {
        return std::make_unique<Binder>(screen_, form_, [this](const QString& why) { refusal_ = why; });
    }

    SystemClock clock_;
    Timers timers_{clock_};
    ScreenStack stack_{timers_};
    OneOfEach screen_{stack_};
    QWidget form_;
    QVBoxLayout layout_{&form_};
    StateButton& button_ = Add<StateButton>("cmdGo");
    QLabel& label_ = Add<QLabel>("lblCell_2");
    QGroupBox& frame_ = Add<QGroupBox>("fraBox");
    QLineEdit& line_ = Add<QLineEdit>("txtLine");
    QPlainTextEdit& area_ = Add<QPlainTextEdit>("txtArea");
    QCheckBox& check_ = Add<QCheckBox>("chkOn");
    QRadioButton& first_ = Add<QRadioButton>("optFirst");
    QRadioButton& second_ = Add<QRadioButton>("optSecond");
    QComboBox& combo_ = Add<QComboBox>("cboCount");
    QTableWidget& table_ = Add<QTableWidget>("grdRows");
    QLabel& decoration_ = Add<QLabel>("decorCaption");
    QString refusal_;
    std::unique_ptr<Binder> binder_;
};

TEST_F(BinderTest, AListIsLeftWithTheKeyboardAndAfterAChoiceOnly) {
    int left = 0;
    screen_.combo.Leave = [&left] { ++left; };
    combo_.setFocus();
    check_.setFocus();
    EXPECT_EQ(left, 0);
    combo_.setFocus();
    QTest::keyClick(&combo_, Qt::Key_Down);
    combo_.showPopup();
    combo_.hidePopup();
    EXPECT_EQ(left, 0) << "its own list keeps the keyboard";
    check_.setFocus();
    EXPECT_EQ(left, 1);
}

TEST_F(BinderTest, ALongTableLooksLikeAShortOneButIsNotMeasuredRowByRow) {
    const int rowHeight = table_.rowHeight(0);
    for (const int rows : {1000, 1001, 40}) {
        screen_.grid.Resize(rows + 1, 2);
        for (int row = 1; row <= rows; ++row) screen_.grid.SetCell(row, 1, "S" + std::to_string(row));
        QTest::qWait(1);
        ASSERT_EQ(table_.rowCount(), rows);
        EXPECT_EQ(table_.item(rows - 1, 1)->text().toStdString(), "S" + std::to_string(rows));
        EXPECT_EQ(table_.rowHeight(rows - 1), rowHeight);
        EXPECT_EQ(table_.verticalHeader()->sectionResizeMode(0),
                  rows > 100 ? QHeaderView::Fixed : QHeaderView::ResizeToContents);
    }
}

TEST_F(BinderTest, PairsEveryControlAndShowsWhatItHolds) {
    EXPECT_TRUE(binder_->Report().IsClean()) << binder_->Report().Text().toStdString();
    EXPECT_EQ(button_.text(), "&Go");
    EXPECT_EQ(label_.text(), "label");
    EXPECT_EQ(frame_.title(), "Box");
    EXPECT_EQ(combo_.count(), 2);
    EXPECT_EQ(combo_.currentIndex(), -1);
    EXPECT_EQ(table_.rowCount(), 2);
    EXPECT_EQ(table_.horizontalHeaderItem(1)->text(), "Serial");
    EXPECT_EQ(table_.item(1, 1)->text(), "B");
}

TEST_F(BinderTest, TheProgramSpeaksAndNothingComesBack) {
    screen_.button.Caption = "Stop";
    screen_.text.Text = "12.5";
    screen_.area.Text = "one\r\ntwo";
    screen_.check.Value = true;
    screen_.second.Choose();
    screen_.combo.ListIndex = 1;
    screen_.label.Visible = false;
    screen_.frame.Enabled = false;
    screen_.grid.SetCell(1, 1, "C");
    screen_.grid.SetCellColor(1, 1, colors::mustBeUpdated);
    QTest::qWait(5);
    EXPECT_EQ(button_.text(), "Stop");
    EXPECT_EQ(line_.text(), "12.5");
    EXPECT_EQ(area_.toPlainText(), "one\ntwo");
    EXPECT_TRUE(check_.isChecked());
    EXPECT_TRUE(second_.isChecked());
    EXPECT_FALSE(first_.isChecked());
    EXPECT_EQ(combo_.currentIndex(), 1);
    EXPECT_TRUE(label_.isHidden());
    EXPECT_FALSE(frame_.isEnabled());
    EXPECT_EQ(table_.item(0, 1)->text(), "C");
    EXPECT_EQ(table_.item(0, 1)->background().color(), QColor(255, 192, 128));
    EXPECT_EQ(table_.item(0, 1)->toolTip(), "must be updated");
    EXPECT_EQ(screen_.acts, "");
}

TEST_F(BinderTest, WhatTheUserDoesReachesTheControl) {
    QTest::mouseClick(&button_, Qt::LeftButton);
    QTest::mouseClick(&check_, Qt::LeftButton, {}, QPoint(10, check_.height() / 2));
    QTest::mouseClick(&second_, Qt::LeftButton, {}, QPoint(10, second_.height() / 2));
    QTest::keyClick(&combo_, Qt::Key_Down);
    QTest::keyClicks(&line_, "7");
    QTest::keyClick(&line_, Qt::Key_Return);
    emit table_.cellClicked(1, 0);
    EXPECT_EQ(screen_.acts, "cmdGo! chkOn! optSecond! cboCount! left 2,0 ");
    EXPECT_TRUE(screen_.check.Value);
    EXPECT_TRUE(screen_.second.IsChosen());
    EXPECT_EQ(screen_.combo.DisplayText(), "five");
    EXPECT_EQ(screen_.text.Text.Get(), "7");
}

TEST_F(BinderTest, AnOptionThatIsChosenStaysChosen) {
    screen_.first.Choose();
    QTest::mouseClick(&first_, Qt::LeftButton, {}, QPoint(10, first_.height() / 2));
    EXPECT_TRUE(first_.isChecked());
}

TEST_F(BinderTest, LeavingABoxUnchangedIsNoAction) {
    screen_.text.Text = "5";
    line_.setFocus();
    QTest::keyClick(&line_, Qt::Key_Return);
    button_.setFocus();
    EXPECT_EQ(screen_.acts, "");
}

TEST_F(BinderTest, TypingCountsBeforeTheButtonThatItsLetterPresses) {
    line_.setFocus();
    QTest::keyClicks(&line_, "3");
    button_.click();  // like the mnemonic: the box keeps the keyboard
    EXPECT_EQ(screen_.acts, "left cmdGo! ");
}

TEST_F(BinderTest, TypedLinesEndAsInTheFiles) {
    area_.setFocus();
    QTest::keyClicks(&area_, "a");
    QTest::keyClick(&area_, Qt::Key_Return);
    QTest::keyClicks(&area_, "b");
    button_.setFocus();
    EXPECT_EQ(screen_.area.Text.Get(), "a\r\nb");
}

TEST_F(BinderTest, WhatTheScreenRefusesIsToldAndPutBack) {
    screen_.text.Text = "old";
    line_.setText(QString::fromUtf8("\u4e2d"));  // not in the files' code page
    QTest::keyClick(&line_, Qt::Key_Return);
    EXPECT_FALSE(refusal_.isEmpty());
    EXPECT_EQ(line_.text(), "old");
    EXPECT_EQ(screen_.acts, "");
}

TEST_F(BinderTest, EditedCellShowsWhatTheProgramMadeOfIt) {
    table_.item(0, 1)->setText("refused");
    QTest::qWait(5);
    EXPECT_EQ(table_.item(0, 1)->text(), "A");
    table_.item(0, 1)->setText("taken");
    QTest::qWait(5);
    EXPECT_EQ(screen_.grid.Cell(1, 1), "taken");
    EXPECT_EQ(screen_.acts, "edit edit ");
}

TEST_F(BinderTest, StateIsSaidInWordsToo) {
    screen_.button.BackColor = colors::complete;
    screen_.text.BackColor = colors::warning;
    EXPECT_EQ(button_.accessibleDescription(), "complete");
    EXPECT_EQ(line_.accessibleDescription(), "warning");
    EXPECT_EQ(line_.toolTip(), "warning");
    EXPECT_GT(button_.sizeHint().height(), button_.QPushButton::sizeHint().height());
}

TEST_F(BinderTest, FilledCellAnswersAClick) {
    screen_.text.Locked = true;
    QTest::mouseClick(&line_, Qt::LeftButton);
    EXPECT_EQ(screen_.acts, "") << "an empty cell has nothing to show";
    screen_.text.Text = "8,000";
    QTest::mouseClick(&line_, Qt::LeftButton);
    QTest::keyClick(&line_, Qt::Key_Space);
    EXPECT_EQ(screen_.acts, "txtLine! txtLine! ");
}

TEST_F(BinderTest, ReportsWhatDoesNotPair) {
    binder_.reset();
    label_.setObjectName(QStringLiteral("lblOther"));
    Add<QLabel>("cmdGo");
    table_.setObjectName(QStringLiteral("decorTable"));
    Add<QLabel>("grdRows");
    const auto binder = Bind();
    const BindingReport& report = binder->Report();
    EXPECT_EQ(report.missing, QStringList{"lblCell_2"});
    EXPECT_EQ(report.ambiguous, QStringList{"cmdGo"});
    EXPECT_EQ(report.unsupported, QStringList{"grdRows"});
    EXPECT_EQ(report.unbound, QStringList{"lblOther"});
}

}  // namespace
}  // namespace bellmark
