// One action per keystroke: held keys, double clicks, and an Accept button that has just been enabled.

#include "screens/press_guard.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <QtTest/QTest>

namespace bellmark {
namespace {

using namespace std::chrono_literals;

class PressGuardTest : public testing::Test {
  protected:
    PressGuardTest() {
        auto* layout = new QVBoxLayout(&window_);
        for (QWidget* widget : std::initializer_list<QWidget*>{&next_, &accept_, &line_, &area_}) {
            layout->addWidget(widget);
        }
        accept_.setObjectName(QStringLiteral("cmdAccept"));
        // As an Accept that takes the drop and arms the next one: there is still a button below the pointer.
        QObject::connect(&next_, &QPushButton::clicked, &window_, [this] { ++presses_; });
        QObject::connect(&accept_, &QPushButton::clicked, &window_, [this] { ++accepted_; });
        next_.setAutoDefault(true);
        accept_.setAutoDefault(true);
        window_.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window_));
    }

    static void Key(QWidget& widget, Qt::Key key, bool isHeld, Qt::KeyboardModifiers with = Qt::NoModifier,
                    const QString& text = {}) {
        widget.setFocus();
        for (const auto type : {QEvent::ShortcutOverride, QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, key, with, text, isHeld);
            QApplication::sendEvent(&widget, &event);
        }
    }

    static void Click(QWidget& widget, quint64 time, QEvent::Type press = QEvent::MouseButtonPress) {
        const QPointF place = widget.rect().center();
        for (const auto type : {press, QEvent::MouseButtonRelease}) {
            const auto buttons = type == press ? Qt::LeftButton : Qt::NoButton;
            QMouseEvent event(type, place, widget.mapToGlobal(place), Qt::LeftButton, buttons, Qt::NoModifier);
            event.setTimestamp(time);
            QApplication::sendEvent(&widget, &event);
        }
    }

    PressGuard guard_{1000ms};
    QWidget window_;
    QPushButton next_{QStringLiteral("&Next")};
    QPushButton accept_{QStringLiteral("&Accept")};
    QLineEdit line_;
    QPlainTextEdit area_;
    int presses_ = 0;
    int accepted_ = 0;
};

TEST_F(PressGuardTest, AHeldKeyPressesOnceAndTypesOn) {
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) {
        presses_ = 0;
        Key(next_, key, false);
        for (int i = 0; i < 5; ++i) Key(next_, key, true);
        EXPECT_EQ(presses_, 1) << key;
    }
    for (int i = 0; i < 3; ++i) {
        Key(line_, Qt::Key_Space, true, Qt::NoModifier, QStringLiteral(" "));
        Key(line_, Qt::Key_A, true, Qt::NoModifier, QStringLiteral("a"));
        Key(area_, Qt::Key_Return, true, Qt::NoModifier, QStringLiteral("\r"));
    }
    EXPECT_EQ(line_.text(), " a a a");
    EXPECT_EQ(area_.toPlainText(), "\n\n\n");
    // A held letter with Alt must not reach the desktop's shortcuts: it is accepted before they are checked.
    QKeyEvent held(QEvent::ShortcutOverride, Qt::Key_N, Qt::AltModifier, {}, true);
    held.ignore();
    QApplication::sendEvent(&next_, &held);
    EXPECT_TRUE(held.isAccepted());
}

TEST_F(PressGuardTest, ADoubleClickPressesOnceWhateverComesUpBelowIt) {
    const auto interval = static_cast<quint64>(QApplication::doubleClickInterval());
    Click(next_, 10000);
    Click(next_, 10100, QEvent::MouseButtonDblClick);
    EXPECT_EQ(presses_, 1);
    Click(next_, 10200);  // the third of a fast series
    EXPECT_EQ(presses_, 1);
    Click(next_, 10200 + interval);
    EXPECT_EQ(presses_, 2);

    // A click removes the button, and another button takes its place.
    Click(next_, 20000);
    accept_.setGeometry(next_.geometry());
    Click(accept_, 20100);
    EXPECT_EQ(accepted_, 0);
    Click(accept_, 20100 + interval);
    EXPECT_EQ(accepted_, 1);
    next_.move(400, 300);
    Click(next_, 20200 + interval);
    EXPECT_EQ(presses_, 4) << "two quick clicks in two places are two";
}

TEST_F(PressGuardTest, AnAcceptThatHasJustComeAliveRests) {
    accept_.setEnabled(false);
    accept_.setEnabled(true);
    Key(accept_, Qt::Key_Return, false);
    Key(accept_, Qt::Key_Space, false);
    Click(accept_, 30000);
    QTest::keyClick(&window_, Qt::Key_A, Qt::AltModifier);
    EXPECT_EQ(accepted_, 0);
    Click(next_, 31000);
    EXPECT_EQ(presses_, 1) << "only the answer to the drop rests";
    QTest::qWait(1050);
    Key(accept_, Qt::Key_Return, false);
    Click(accept_, 40000);
    EXPECT_EQ(accepted_, 2);
}

}  // namespace
}  // namespace bellmark
