#include "screens/page.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QVBoxLayout>
#include <algorithm>

#include "controls/controls.h"
#include "controls/screen.h"
#include "screens/binder.h"
#include "screens/forms.h"
#include "screens/state_button.h"
#include "screens/state_colors.h"

namespace bellmark {

namespace {

/// Holds the keyboard where nothing can be done but leave: that is no next step.
bool IsWayBack(const Control* control) {
    return control && control->Name() == "cmdMainMenu";
}

bool IsSuggested(const Control& control) {
    return dynamic_cast<const Button*>(&control) && control.BackColor.Get() == colors::suggestedNext &&
           control.IsReachable();
}

}  // namespace

Page::Page(Screen& screen, std::unique_ptr<QWidget> form, std::function<void(const QString&)> tellUser)
    : screen_(screen) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    if (screen_.Find("PageTitle")) layout->addWidget(MakePageHeader().release());
    layout->addWidget(form.release(), 1);
    // A screen changes many controls at once: what is suggested is looked at when it has finished.
    soon_.setSingleShot(true);
    connect(&soon_, &QTimer::timeout, this, [this] { MarkSuggestedStep(); });
    binder_ = std::make_unique<Binder>(screen_, *this, std::move(tellUser), [this] { soon_.start(0); });
    screen_.Changed = [this] { Follow(); };
    // A frame with a button of its own takes the suggestion over while the keyboard is in it.
    connect(qApp, &QApplication::focusChanged, this, [this] {
        if (isVisible()) soon_.start(0);
    });
    Follow();
}

Page::~Page() {
    screen_.Changed = nullptr;
    // The bindings go while the widgets are still there.
    binder_.reset();
}

void Page::Follow() {
    MarkSuggestedStep();
    if (screen_.FocusRequests() != focusRequestsMet_) TakeFocus();
    update();
}

/// The button that the innermost frame around the keyboard has for something: "wanted" is the frame's member for it.
template <class Wanted>
const Button* Page::ButtonOfFrames(Wanted wanted) const {
    const QWidget* focused = focusWidget();
    if (!focused || !focused->hasFocus()) return nullptr;
    for (const Control* control : screen_.Controls()) {
        if (binder_->WidgetOf(*control) != focused) continue;
        for (const Frame* frame = control->LiesIn(); frame; frame = frame->LiesIn()) {
            const Button* button = frame->*wanted;
            if (button && button->IsReachable()) return button;
        }
    }
    return nullptr;
}

/// The frame's button while the keyboard is in one that has its own. Else the default button; without one the button in
/// the colour of the suggestion, or the one that the screen gave the keyboard.
const Button* Page::SuggestedButton() const {
    if (const Button* ofFrame = ButtonOfFrames(&Frame::DefaultButton)) return ofFrame;
    const auto* suggested = dynamic_cast<const Button*>(screen_.DefaultButton());
    for (const Control* control : screen_.Controls()) {
        if (!suggested && IsSuggested(*control)) suggested = dynamic_cast<const Button*>(control);
    }
    if (!suggested && !IsWayBack(screen_.Focus())) suggested = dynamic_cast<const Button*>(screen_.Focus());
    return suggested && suggested->IsReachable() ? suggested : nullptr;
}

void Page::MarkSuggestedStep() {
    const Button* suggested = SuggestedButton();
    for (const Control* control : screen_.Controls()) {
        if (auto* button = dynamic_cast<StateButton*>(binder_->WidgetOf(*control))) {
            button->SetSuggested(control == suggested);
        }
    }
    emit Refreshed();
}

void Page::TakeFocus() {
    focusRequestsMet_ = screen_.FocusRequests();
    for (const Control* wanted : {screen_.Focus(), screen_.DefaultButton()}) {
        QWidget* widget = wanted ? binder_->WidgetOf(*wanted) : nullptr;
        if (!widget || !widget->isEnabled() || widget->isHidden()) continue;
        widget->setFocus(Qt::OtherFocusReason);
        return;
    }
    setFocus(Qt::OtherFocusReason);
}

QString Page::SuggestedStep() const {
    const Button* suggested = SuggestedButton();
    return suggested ? QString::fromStdString(suggested->Caption).remove(QLatin1Char('&')) : QString();
}

bool Page::EnterSuggests() const {
    const QWidget* focused = focusWidget();
    if (!focused || !focused->hasFocus()) return true;
    const auto* button = qobject_cast<const StateButton*>(focused);
    // In a list Enter chooses the row.
    return (!button || button->IsSuggested()) && !qobject_cast<const QAbstractItemView*>(focused);
}

bool Page::TakesKeys(const QKeySequence& keys) const {
    const auto buttons = findChildren<QAbstractButton*>();
    return std::any_of(buttons.begin(), buttons.end(), [&](const QAbstractButton* button) {
        return button->isEnabled() && button->isVisibleTo(this) && QKeySequence::mnemonic(button->text()) == keys;
    });
}

void Page::keyPressEvent(QKeyEvent* event) {
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    // A button that has the keyboard is pressed itself.
    if (auto* focused = qobject_cast<StateButton*>(focusWidget()); isEnter && focused && focused->hasFocus()) {
        focused->click();
        return;
    }
    const Button* wanted = nullptr;
    if (isEnter && EnterSuggests()) wanted = SuggestedButton();
    if (event->key() == Qt::Key_Escape) wanted = ButtonOfFrames(&Frame::CancelButton);
    if (!Press(wanted)) QWidget::keyPressEvent(event);
}

/// False when it is no button of this page.
bool Page::Press(const Button* button) {
    auto* view = button ? qobject_cast<StateButton*>(binder_->WidgetOf(*button)) : nullptr;
    if (!view) return false;
    if (view->isEnabled() && view->isVisible()) view->click();
    return true;
}

void Page::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const Color color = screen_.BackColor();
    painter.fillRect(rect(), IsPlain(color) ? palette().color(QPalette::Window) : ToQColor(color));
}

}  // namespace bellmark
