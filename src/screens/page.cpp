#include "screens/page.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLayout>
#include <QPainter>
#include <QScrollArea>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>

#include "controls/controls.h"
#include "controls/enter_key.h"
#include "controls/screen.h"
#include "controls/screen_stack.h"
#include "screens/binder.h"
#include "screens/forms.h"
#include "screens/state_button.h"
#include "screens/state_colors.h"

namespace bellmark {

namespace {

/// A form that is higher than the display can be scrolled, so that all of it can be reached.
QScrollArea* MakeScrollArea(std::unique_ptr<QWidget> form) {
    auto* area = new QScrollArea;
    area->setObjectName(QStringLiteral("decorScroll"));
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidget(form.release());
    // The page's own background stays visible; otherwise the widget of an area fills its own.
    area->viewport()->setAutoFillBackground(false);
    area->widget()->setAutoFillBackground(false);
    return area;
}

/// Takes the row of buttons at the foot of the form out of it, so that it stays in sight while the rest scrolls.
/// Nothing for a form without such a row.
std::unique_ptr<QWidget> TakeFoot(QWidget& form) {
    QLayout* column = form.layout();
    const int last = column ? column->count() - 1 : -1;
    QLayout* row = last > 0 ? column->itemAt(last)->layout() : nullptr;
    if (!row) return nullptr;
    bool hasButton = false;
    for (int i = 0; i < row->count(); ++i) {
        hasButton = hasButton || qobject_cast<QAbstractButton*>(row->itemAt(i)->widget());
    }
    if (!hasButton) return nullptr;
    column->takeAt(last);
    row->setParent(nullptr);
    auto foot = std::make_unique<QWidget>();
    foot->setObjectName(QStringLiteral("decorFoot"));
    QMargins margins = column->contentsMargins();
    margins.setTop(column->spacing());
    row->setContentsMargins(margins);
    margins = column->contentsMargins();
    margins.setBottom(0);
    column->setContentsMargins(margins);
    foot->setLayout(row);
    return foot;
}

}  // namespace

Page::Page(Screen& screen, std::unique_ptr<QWidget> form, std::function<void(const QString&)> tellUser)
    : screen_(screen) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    if (screen_.Find("PageTitle")) layout->addWidget(MakePageHeader().release());
    auto foot = TakeFoot(*form);
    scroll_ = MakeScrollArea(std::move(form));
    layout->addWidget(scroll_, 1);
    foot_ = foot.get();
    if (foot) layout->addWidget(foot.release());
    // A screen changes many controls at once: the suggestion is updated when it has finished.
    soon_.setSingleShot(true);
    connect(&soon_, &QTimer::timeout, this, [this] { MarkSuggestedStep(); });
    binder_ = std::make_unique<Binder>(screen_, *this, std::move(tellUser), [this] { soon_.start(0); });
    screen_.Changed = [this] { Follow(); };
    // A frame with its own button takes over the suggestion while the keyboard is in it.
    connect(qApp, &QApplication::focusChanged, this, [this] {
        if (isVisible()) soon_.start(0);
    });
    Follow();
}

Page::~Page() {
    screen_.Changed = nullptr;
    // The bindings are removed while the widgets still exist.
    binder_.reset();
}

void Page::Follow() {
    MarkSuggestedStep();
    MarkBackground();
    if (screen_.FocusRequests() != focusRequestsMet_) TakeFocus();
    update();
}

/// Labels that lie on the page itself are dark on a state's colour, in the dark look, too.
void Page::MarkBackground() {
    const bool isState = !IsPlain(screen_.BackColor());
    if (isState == backgroundIsState_) return;
    backgroundIsState_ = isState;
    for (QWidget* part : {scroll_->widget(), foot_}) {
        if (!part) continue;
        part->setProperty("onState", isState);
        for (QLabel* label : part->findChildren<QLabel*>(QString(), Qt::FindDirectChildrenOnly)) {
            style()->unpolish(label);
            style()->polish(label);
        }
    }
}

Control* Page::HasKeyboard() const {
    const QWidget* focused = focusWidget();
    if (!focused || !focused->hasFocus()) return nullptr;
    const auto& controls = screen_.Controls();
    const auto found = std::find_if(controls.begin(), controls.end(),
                                    [&](const Control* control) { return binder_->WidgetOf(*control) == focused; });
    return found == controls.end() ? nullptr : *found;
}

void Page::MarkSuggestedStep() {
    const Button* suggested = SuggestedButton(screen_, HasKeyboard());
    for (const Control* control : screen_.Controls()) {
        if (auto* button = dynamic_cast<StateButton*>(binder_->WidgetOf(*control))) {
            button->SetSuggested(control == suggested);
        }
    }
    emit Refreshed();
}

void Page::TakeFocus() {
    focusRequestsMet_ = screen_.FocusRequests();
    for (const Control* wanted : std::initializer_list<const Control*>{screen_.Focus(), screen_.DefaultButton()}) {
        QWidget* widget = wanted ? binder_->WidgetOf(*wanted) : nullptr;
        if (!widget || !widget->isEnabled() || widget->isHidden()) continue;
        widget->setFocus(Qt::OtherFocusReason);
        scroll_->ensureWidgetVisible(widget);
        return;
    }
    setFocus(Qt::OtherFocusReason);
}

QString Page::SuggestedStep() const {
    const Button* suggested = SuggestedButton(screen_, HasKeyboard());
    return suggested ? QString::fromStdString(suggested->Caption).remove(QLatin1Char('&')) : QString();
}

bool Page::EnterSuggests() const {
    return ButtonOfEnter(screen_, HasKeyboard()) == SuggestedButton(screen_, HasKeyboard());
}

bool Page::TakesKeys(const QKeySequence& keys) const {
    const auto buttons = findChildren<QAbstractButton*>();
    return std::any_of(buttons.begin(), buttons.end(), [&](const QAbstractButton* button) {
        return button->isEnabled() && button->isVisibleTo(this) && QKeySequence::mnemonic(button->text()) == keys;
    });
}

void Page::keyPressEvent(QKeyEvent* event) {
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const Button* pressed = nullptr;
    if (isEnter) pressed = ButtonOfEnter(screen_, HasKeyboard());
    if (event->key() == Qt::Key_Escape) pressed = ButtonOfEscape(HasKeyboard());
    auto* button = pressed ? qobject_cast<StateButton*>(binder_->WidgetOf(*pressed)) : nullptr;
    if (!button) {
        QWidget::keyPressEvent(event);
        return;
    }
    if (button->isEnabled() && button->isVisible()) button->click();
}

/// A label passes its click on; every other control handles it itself.
void Page::mousePressEvent(QMouseEvent* event) {
    QWidget::mousePressEvent(event);
    screen_.Stack().Dispatch(screen_.Name() + ".Click", [this] { screen_.Clicked(); });
}

void Page::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const Color color = screen_.BackColor();
    painter.fillRect(rect(), IsPlain(color) ? palette().color(QPalette::Window) : ToQColor(color));
}

}  // namespace bellmark
