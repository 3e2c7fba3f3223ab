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
#include <utility>

#include "controls/controls.h"
#include "controls/enter_key.h"
#include "controls/screen.h"
#include "controls/screen_stack.h"
#include "screens/binder.h"
#include "screens/forms.h"
#include "screens/mnemonics.h"
#include "screens/plot_widget.h"
#include "screens/state_button.h"
#include "screens/state_colors.h"

namespace bellmark {

namespace {

/// Holds a form as high as the display, or as the form needs at least. The height that its plots and lists would like
/// is no reason to scroll.
class FormHolder : public QWidget {
  public:
    explicit FormHolder(std::unique_ptr<QWidget> form) : form_(form.release()) { form_->setParent(this); }

    QSize minimumSizeHint() const override {
        const QLayout* layout = form_->layout();
        if (!layout) return form_->minimumSizeHint();
        const QSize least = layout->totalMinimumSize();
        return {least.width(), layout->hasHeightForWidth()
                                   ? layout->totalMinimumHeightForWidth(std::max(width(), least.width()))
                                   : least.height()};
    }
    QSize sizeHint() const override { return minimumSizeHint(); }

  protected:
    bool event(QEvent* event) override {
        if (event->type() == QEvent::LayoutRequest) updateGeometry();
        return QWidget::event(event);
    }
    void resizeEvent(QResizeEvent*) override {
        form_->setGeometry(rect());
        updateGeometry();
    }

  private:
    QWidget* form_;
};

/// A form that is higher than the display can be scrolled, so that all of it can be reached.
QScrollArea* MakeScrollArea(std::unique_ptr<QWidget> form) {
    auto* area = new QScrollArea;
    area->setObjectName(QStringLiteral("decorScroll"));
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setFocusPolicy(Qt::NoFocus);
    form->setAutoFillBackground(false);
    auto holder = std::make_unique<FormHolder>(std::move(form));
    holder->setObjectName(QStringLiteral("decorHolder"));
    area->setWidget(holder.release());
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
    form_ = form.get();
    scroll_ = MakeScrollArea(std::move(form));
    layout->addWidget(scroll_, 1);
    foot_ = foot.get();
    if (foot) layout->addWidget(foot.release());
    // A screen changes many controls at once: the suggestion is updated when it has finished.
    soon_.setSingleShot(true);
    connect(&soon_, &QTimer::timeout, this, [this] {
        MarkSuggestedStep();
        TellState();
    });
    binder_ = std::make_unique<Binder>(screen_, *this, std::move(tellUser), [this] { soon_.start(0); });
    screen_.Changed = [this] { Follow(); };
    // A frame with its own button takes over the suggestion while the keyboard is in it.
    connect(qApp, &QApplication::focusChanged, this, [this] {
        if (isVisible()) soon_.start(0);
    });
    EquipPlots();
    GiveMnemonics(*this);
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
    soon_.start(0);
    if (screen_.FocusRequests() != focusRequestsMet_) TakeFocus();
    update();
}

/// Labels that lie on the page itself are dark on a state's colour, in the dark look, too.
void Page::MarkBackground() {
    const bool isState = !IsPlain(screen_.BackColor());
    if (isState == backgroundIsState_) return;
    backgroundIsState_ = isState;
    for (QWidget* part : {form_, foot_}) {
        if (!part) continue;
        part->setProperty("onState", isState);
        for (QLabel* label : part->findChildren<QLabel*>(QString(), Qt::FindDirectChildrenOnly)) {
            style()->unpolish(label);
            style()->polish(label);
        }
    }
}

/// A plot names the other plot of the form that shares its axis, and tells on paper of which run it is.
void Page::EquipPlots() {
    for (PlotWidget* plot : findChildren<PlotWidget*>()) {
        plot->TellRun([this] { return RunLines(); });
        const QString other = plot->property("linkedTo").toString();
        if (auto* leader = other.isEmpty() ? nullptr : findChild<PlotWidget*>(other)) plot->LinkTo(*leader);
    }
}

/// Title of the screen, then owner and FWD.
QStringList Page::RunLines() const {
    const auto textOf = [this](const char* name) {
        const Control* control = screen_.Find(name);
        return control ? QString::fromStdString(control->DisplayText()) : QString();
    };
    QStringList lines{QString::fromStdString(screen_.Title())};
    QStringList run{textOf("ProcedureName"), textOf("FWDOwnerName"), textOf("FWDNameCtrl")};
    run.removeAll(QString());
    if (!run.isEmpty()) lines.push_back(run.join(QLatin1String(", ")));
    return lines;
}

/// A drop screen is green while it waits for its drop and yellow when it has it; its panel asks for an answer.
void Page::TellState() {
    if (!isVisible()) return;
    std::optional<Signal> state;
    if (screen_.BackColor() == colors::complete) state = Signal::Armed;
    if (screen_.BackColor() == colors::warning) state = Signal::Captured;
    const Control* panel = screen_.Find("fraMessage");
    if (panel && panel->Visible) state = Signal::NeedsAnswer;
    const auto before = std::exchange(told_, state);
    // A panel that was answered leaves the drop as it was.
    const bool isAnswered = before == Signal::NeedsAnswer && state == Signal::Captured;
    if (state && state != before && !isAnswered) emit Signalled(*state);
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
