#include "screens/page.h"

#include <QAbstractButton>
#include <QAbstractItemView>
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

/// The default button; without one the button in the colour of the suggestion, or the one that the screen gave the
/// keyboard.
const Button* Page::SuggestedButton() const {
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
    const Control* wanted = SuggestedButton();
    auto* button =
        isEnter && wanted && EnterSuggests() ? qobject_cast<StateButton*>(binder_->WidgetOf(*wanted)) : nullptr;
    if (!button) {
        QWidget::keyPressEvent(event);
        return;
    }
    if (button->isEnabled() && button->isVisible()) button->click();
}

void Page::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const Color color = screen_.BackColor();
    painter.fillRect(rect(), IsPlain(color) ? palette().color(QPalette::Window) : ToQColor(color));
}

}  // namespace bellmark
