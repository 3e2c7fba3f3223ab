#include "screens/press_guard.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QTextEdit>

namespace bellmark {

namespace {

/// A one-line box that can be edited. A locked one may be a cell that a click or Space presses.
bool IsOpenLine(const QObject* widget) {
    const auto* line = qobject_cast<const QLineEdit*>(widget);
    return line && !line->isReadOnly();
}

/// Widgets in which Enter and Space are typed.
bool IsTextArea(const QObject* widget) {
    const auto* plain = qobject_cast<const QPlainTextEdit*>(widget);
    const auto* rich = qobject_cast<const QTextEdit*>(widget);
    return (plain && !plain->isReadOnly()) || (rich && !rich->isReadOnly());
}

bool IsEnter(int key) {
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

bool IsPressable(const QObject* widget) {
    return qobject_cast<const QAbstractButton*>(widget) ||
           (qobject_cast<const QLineEdit*>(widget) && !IsOpenLine(widget));
}

}  // namespace

PressGuard::PressGuard(std::chrono::milliseconds rest) : rest_(rest) {
    qApp->installEventFilter(this);
}

PressGuard::~PressGuard() = default;

/// Typing repeats while a key is held, pressing does not.
bool PressGuard::IsHeldKey(const QObject* watched, const QKeyEvent& event) const {
    if (!event.isAutoRepeat() || IsTextArea(watched)) return false;
    const bool isLetter = event.modifiers().testFlag(Qt::AltModifier);
    const bool isSpace = event.key() == Qt::Key_Space || event.key() == Qt::Key_Select;
    return isLetter || IsEnter(event.key()) || event.key() == Qt::Key_Escape || (isSpace && !IsOpenLine(watched));
}

/// Presses of the same spot within the desktop's time for a double click count as one press. A press that a widget
/// passes on to the one behind it keeps its time.
bool PressGuard::IsRepeatedPress(QObject* watched, const QMouseEvent& event) {
    const quint64 later = event.timestamp() - lastPress_;
    const bool isSoon = later > 0 && later < static_cast<quint64>(QApplication::doubleClickInterval());
    const bool isHere = (event.globalPosition() - lastPlace_).manhattanLength() < QApplication::startDragDistance();
    const bool isRepeated = event.type() == QEvent::MouseButtonDblClick || (pressed_ && isSoon && isHere);
    pressed_ = true;
    lastPress_ = event.timestamp();
    lastPlace_ = event.globalPosition();
    return isRepeated && IsPressable(watched);
}

void PressGuard::MeetEnabling(QObject* watched) {
    auto* button = qobject_cast<QAbstractButton*>(watched);
    if (!button || !button->isEnabled() || button->objectName() != QLatin1String("cmdAccept")) return;
    accept_ = button;
    alive_.start();
}

/// Enter anywhere on its page may press the resting button; a box in front of it has its own answers.
bool PressGuard::RestsBehind(const QObject* watched) const {
    const auto* widget = qobject_cast<const QWidget*>(watched);
    const bool rests = accept_ && alive_.isValid() && !alive_.hasExpired(rest_.count());
    return rests && widget && widget->window() == accept_->window();
}

bool PressGuard::eventFilter(QObject* watched, QEvent* event) {
    // The event of a window is repeated for its widget.
    if (!watched->isWidgetType()) return false;
    switch (event->type()) {
        case QEvent::EnabledChange:
            MeetEnabling(watched);
            return false;
        case QEvent::ShortcutOverride: {
            // Accepted here, a held letter is no shortcut; it comes back as a key and is dropped.
            const bool isHeld = IsHeldKey(watched, *static_cast<QKeyEvent*>(event));
            if (isHeld) event->accept();
            return isHeld;
        }
        case QEvent::Shortcut:
            return watched == accept_ && RestsBehind(watched);
        case QEvent::KeyPress: {
            const auto& key = *static_cast<QKeyEvent*>(event);
            const bool mayAccept = IsEnter(key.key()) || (key.key() == Qt::Key_Space && watched == accept_);
            return IsHeldKey(watched, key) || (mayAccept && !IsTextArea(watched) && RestsBehind(watched));
        }
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick: {
            const bool isRefused = IsRepeatedPress(watched, *static_cast<QMouseEvent*>(event)) ||
                                   (watched == accept_ && RestsBehind(watched));
            refused_ = isRefused ? watched : nullptr;
            return isRefused;
        }
        case QEvent::MouseButtonRelease: {
            const bool isRefused = refused_ && watched == refused_;
            if (isRefused) refused_ = nullptr;
            return isRefused;
        }
        default:
            return false;
    }
}

}  // namespace bellmark
