#include "screens/link.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QScrollBar>
#include <QTableWidget>
#include <QTextBrowser>
#include <QTextCursor>

#include "controls/controls.h"
#include "controls/picture.h"
#include "screens/formatted_document.h"
#include "screens/grid_link.h"
#include "screens/plot_widget.h"
#include "screens/state_button.h"
#include "screens/state_colors.h"

namespace bellmark {

namespace {

QString Caption(const CaptionedControl& control) {
    return QString::fromStdString(control.Caption);
}

class ButtonLink : public Link {
  public:
    ButtonLink(Button& button, StateButton& view, LinkServices services)
        : Link(button, view, std::move(services)), button_(button), view_(view) {
        QObject::connect(&view_, &QAbstractButton::clicked, &Context(),
                         [this] { PerformAfterTyping([this] { button_.UserClick(); }); });
    }
    void Refresh() override {
        view_.setText(Caption(button_));
        view_.SetState(ToQColor(button_.BackColor), StateText(button_.BackColor));
        ShowCommonProperties(button_, view_);
    }

  private:
    Button& button_;
    StateButton& view_;
};

class MenuItemLink : public Link {
  public:
    MenuItemLink(Button& button, QAction& view, LinkServices services)
        : Link(button, view, std::move(services)), button_(button), view_(view) {
        QObject::connect(&view_, &QAction::triggered, &Context(),
                         [this] { PerformAfterTyping([this] { button_.UserClick(); }); });
    }
    void Refresh() override {
        view_.setText(Caption(button_));
        view_.setEnabled(button_.Enabled);
        view_.setVisible(button_.Visible);
        view_.setToolTip(QString::fromStdString(button_.ToolTip));
    }

  private:
    Button& button_;
    QAction& view_;
};

/// Check boxes and option buttons. A click flips the widget by itself; the control then sets its state.
template <class CheckableControl>
class CheckLink : public Link {
  public:
    CheckLink(CheckableControl& control, QAbstractButton& view, LinkServices services)
        : Link(control, view, std::move(services)), control_(control), view_(view) {
        view_.setAutoExclusive(false);
        QObject::connect(&view_, &QAbstractButton::clicked, &Context(),
                         [this] { PerformAfterTyping([this] { control_.UserClick(); }); });
    }
    void Refresh() override {
        const QString words = StateText(control_.BackColor);
        QString caption = Caption(control_);
        if (!words.isEmpty() && caption.endsWith(QLatin1Char('.'))) caption.chop(1);
        view_.setText(words.isEmpty() ? caption : caption + QLatin1String(": ") + words);
        if constexpr (std::is_same_v<CheckableControl, CheckBox>) {
            view_.setChecked(control_.Value);
        } else {
            view_.setChecked(control_.IsChosen());
        }
        ShowCommonProperties(control_, view_);
    }

  private:
    CheckableControl& control_;
    QAbstractButton& view_;
};

/// Reports a press on a widget that is not a button, by mouse or space bar.
class PressWatcher : public QObject {
  public:
    explicit PressWatcher(std::function<void()> pressed) : pressed_(std::move(pressed)) {}
    bool eventFilter(QObject* watched, QEvent* event) override {
        const bool byMouse = event->type() == QEvent::MouseButtonRelease;
        const bool byKey = event->type() == QEvent::KeyPress &&
                           static_cast<QKeyEvent*>(event)->key() == Qt::Key_Space &&
                           !static_cast<QKeyEvent*>(event)->isAutoRepeat();
        if ((!byMouse && !byKey) || !static_cast<QWidget*>(watched)->isEnabled()) return false;
        pressed_();
        return true;
    }

  private:
    std::function<void()> pressed_;
};

class LabelLink : public Link {
  public:
    LabelLink(Label& label, QLabel& view, LinkServices services)
        : Link(label, view, std::move(services)), label_(label), view_(view) {
        if (!label_.Click) return;
        view_.setFocusPolicy(Qt::TabFocus);
        view_.setCursor(Qt::PointingHandCursor);
        view_.installEventFilter(&press_);
    }
    void Refresh() override {
        view_.setTextFormat(Qt::PlainText);
        view_.setText(Caption(label_));
        ShowCommonProperties(label_, view_);
    }

  private:
    Label& label_;
    QLabel& view_;
    PressWatcher press_{[this] { PerformAfterTyping([this] { label_.UserClick(); }); }};
};

class FrameLink : public Link {
  public:
    FrameLink(Frame& frame, QWidget& view, LinkServices services)
        : Link(frame, view, std::move(services)), frame_(frame), view_(view) {}
    void Refresh() override {
        if (auto* group = qobject_cast<QGroupBox*>(&view_)) group->setTitle(Caption(frame_));
        ShowCommonProperties(frame_, view_);
    }

  private:
    Frame& frame_;
    QWidget& view_;
};

/// Reports when the keyboard leaves a widget for another one. It does not leave for a drop-down list or a box.
class LeaveWatcher : public QObject {
  public:
    explicit LeaveWatcher(std::function<void()> left) : left_(std::move(left)) {}
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::FocusOut) return false;
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        const QObject* next = QApplication::focusWidget();
        while (next && next != watched) next = next->parent();
        const bool keepsIt = next || reason == Qt::PopupFocusReason || reason == Qt::ActiveWindowFocusReason;
        if (!keepsIt) left_();
        return false;
    }

  private:
    std::function<void()> left_;
};

class LineLink : public Link {
  public:
    LineLink(TextBox& box, QLineEdit& view, LinkServices services)
        : Link(box, view, std::move(services)), box_(box), view_(view), watcher_(*this) {
        QObject::connect(&view_, &QLineEdit::editingFinished, &Context(), [this] { Commit(); });
        view_.installEventFilter(&watcher_);
    }
    void Refresh() override {
        const QString text = QString::fromStdString(box_.Text);
        const QString shown = box_.Locked ? Fitting(text) : text;
        if (view_.text() != shown) {
            view_.setText(shown);
            view_.setCursorPosition(0);
        }
        // An empty box has room for its hint.
        const QString hint = QString::fromStdString(box_.EmptyHint);
        view_.setPlaceholderText(box_.Locked ? QString() : hint.isEmpty() ? StateText(box_.BackColor) : hint);
        view_.setReadOnly(box_.Locked);
        const bool canAct = !box_.Locked || IsClickable();
        view_.setFocusPolicy(canAct ? Qt::StrongFocus : Qt::NoFocus);
        view_.setCursor(IsClickable() ? Qt::PointingHandCursor : Qt::IBeamCursor);
        ShowCommonProperties(box_, view_);
        // A text that is only shown, such as a path, may be longer than its box.
        if (box_.Locked && view_.toolTip().isEmpty()) view_.setToolTip(text);
    }
    void Commit() override {
        // What is only shown may be cut.
        if (box_.Locked) return;
        // Leaving a box without a change is no action.
        const QString typed = view_.text();
        if (typed == QString::fromStdString(box_.Text)) return;
        Perform([this, typed] { box_.UserEnter(typed.toStdString()); });
    }

  private:
    /// A coloured cell that can be clicked. On the keyboard Space is the click.
    class ClickWatcher : public QObject {
      public:
        explicit ClickWatcher(LineLink& link) : link_(link) {}
        bool eventFilter(QObject*, QEvent* event) override {
            // A path that is only shown is cut anew.
            if (event->type() == QEvent::Resize && link_.box_.Locked) link_.Refresh();
            const bool clicked = event->type() == QEvent::MouseButtonRelease ||
                                 (event->type() == QEvent::KeyPress &&
                                  static_cast<QKeyEvent*>(event)->key() == Qt::Key_Space && link_.box_.Locked);
            if (!clicked || !link_.IsClickable()) return false;
            link_.PerformAfterTyping([this] { link_.box_.UserClick(); });
            return true;
        }

      private:
        LineLink& link_;
    };

    /// A path that is too long is cut in the middle: its ends tell most.
    QString Fitting(const QString& text) const {
        constexpr int beside = 18;  // border, padding and the cursor
        const bool isPath = text.contains(QLatin1Char('/')) || text.contains(QLatin1Char('\\'));
        return isPath ? view_.fontMetrics().elidedText(text, Qt::ElideMiddle, view_.width() - beside) : text;
    }

    bool IsClickable() const { return box_.Click && !box_.Text.Get().empty(); }

    TextBox& box_;
    QLineEdit& view_;
    ClickWatcher watcher_;
};

class TextAreaLink : public Link {
  public:
    TextAreaLink(TextBox& box, QPlainTextEdit& view, LinkServices services)
        : Link(box, view, std::move(services)), box_(box), view_(view), watcher_([this] { Commit(); }) {
        view_.setTabChangesFocus(true);
        view_.installEventFilter(&watcher_);
    }
    void Refresh() override {
        const QString text = QString::fromStdString(box_.Text);
        if (Shown() != text) view_.setPlainText(text);
        view_.setReadOnly(box_.Locked);
        view_.setFocusPolicy(box_.Locked ? Qt::NoFocus : Qt::StrongFocus);
        ShowCommonProperties(box_, view_);
    }
    void Commit() override {
        const QString typed = Shown();
        if (box_.Locked || typed == QString::fromStdString(box_.Text)) return;
        Perform([this, typed] { box_.UserEnter(typed.toStdString()); });
    }

  private:
    /// With the program's line ends.
    QString Shown() const { return view_.toPlainText().replace(QLatin1Char('\n'), QLatin1String("\r\n")); }

    TextBox& box_;
    QPlainTextEdit& view_;
    LeaveWatcher watcher_;
};

class ComboLink : public Link {
  public:
    ComboLink(ComboBox& combo, QComboBox& view, LinkServices services)
        : Link(combo, view, std::move(services)),
          combo_(combo),
          view_(view),
          watcher_([this] { Perform([this] { combo_.UserLeave(); }); }) {
        QObject::connect(&view_, &QComboBox::activated, &Context(),
                         [this](int index) { PerformAfterTyping([this, index] { combo_.UserChoose(index); }); });
        view_.installEventFilter(&watcher_);
    }
    void Refresh() override {
        QStringList items;
        for (const auto& item : combo_.Items.Get()) items.push_back(QString::fromStdString(item));
        QStringList shown;
        for (int index = 0; index < view_.count(); ++index) shown.push_back(view_.itemText(index));
        if (items != shown) {
            view_.clear();
            view_.addItems(items);
        }
        view_.setCurrentIndex(combo_.ListIndex);
        view_.setPlaceholderText(StateText(combo_.BackColor));
        ShowCommonProperties(combo_, view_);
    }

  private:
    ComboBox& combo_;
    QComboBox& view_;
    LeaveWatcher watcher_;
};

/// A sheet of paper on the screen, as wide as in print.
class RichTextLink : public Link {
  public:
    RichTextLink(RichTextBox& box, QTextBrowser& view, LinkServices services)
        : Link(box, view, std::move(services)), box_(box), view_(view) {
        const int beside = view_.verticalScrollBar()->sizeHint().width() + 2 * view_.frameWidth();
        view_.setFixedWidth(SheetWidth(view_) + beside);
    }
    void Refresh() override {
        FillDocument(*view_.document(), box_.Content, view_.logicalDpiX());
        // The view's cursor moved along with the text; reading starts at the top.
        view_.moveCursor(QTextCursor::Start);
        ShowCommonProperties(box_, view_);
    }

  private:
    RichTextBox& box_;
    QTextBrowser& view_;
};

class PictureLink : public Link {
  public:
    PictureLink(Picture& picture, PlotWidget& view, LinkServices services)
        : Link(picture, view, std::move(services)), picture_(picture), view_(view) {}
    void Refresh() override {
        view_.Show(picture_.Drawn());
        ShowCommonProperties(picture_, view_);
    }

  private:
    Picture& picture_;
    PlotWidget& view_;
};

template <class LinkType, class ControlType, class ViewType>
std::unique_ptr<Link> LinkIfKindsMatch(Control& control, QObject& view, const LinkServices& services) {
    auto* wantedControl = dynamic_cast<ControlType*>(&control);
    auto* wantedView = dynamic_cast<ViewType*>(&view);
    if (!wantedControl || !wantedView) return nullptr;
    return std::make_unique<LinkType>(*wantedControl, *wantedView, services);
}

}  // namespace

Link::Link(Control& control, QObject& view, LinkServices services)
    : control_(control), view_(view), services_(std::move(services)) {
    control_.Changed = [this] {
        Refresh();
        if (services_.changed) services_.changed();
    };
}

Link::~Link() {
    control_.Changed = nullptr;
}

void Link::Perform(const std::function<void()>& action) {
    try {
        action();
        Refresh();
    } catch (const UserError& error) {
        // The old value is shown before the box appears: the box takes the focus away, and the typed text would count a
        // second time.
        Refresh();
        services_.tellUser(QString::fromUtf8(error.what()));
    }
}

void Link::PerformAfterTyping(const std::function<void()>& action) {
    services_.commitTyping();
    Perform(action);
}

std::unique_ptr<Link> MakeLink(Control& control, QObject& view, const LinkServices& services) {
    using Maker = std::unique_ptr<Link> (*)(Control&, QObject&, const LinkServices&);
    constexpr Maker makers[] = {
        LinkIfKindsMatch<ButtonLink, Button, StateButton>,
        LinkIfKindsMatch<MenuItemLink, Button, QAction>,
        LinkIfKindsMatch<CheckLink<CheckBox>, CheckBox, QCheckBox>,
        LinkIfKindsMatch<CheckLink<OptionButton>, OptionButton, QRadioButton>,
        LinkIfKindsMatch<LabelLink, Label, QLabel>,
        LinkIfKindsMatch<FrameLink, Frame, QFrame>,
        LinkIfKindsMatch<FrameLink, Frame, QGroupBox>,
        LinkIfKindsMatch<LineLink, TextBox, QLineEdit>,
        LinkIfKindsMatch<TextAreaLink, TextBox, QPlainTextEdit>,
        LinkIfKindsMatch<ComboLink, ComboBox, QComboBox>,
        LinkIfKindsMatch<RichTextLink, RichTextBox, QTextBrowser>,
        LinkIfKindsMatch<GridLink, Grid, QTableWidget>,
        LinkIfKindsMatch<PictureLink, Picture, PlotWidget>,
    };
    for (const Maker maker : makers) {
        if (auto link = maker(control, view, services)) return link;
    }
    return nullptr;
}

void ShowCommonProperties(const Control& control, QWidget& widget) {
    widget.setEnabled(control.Enabled);
    widget.setVisible(control.Visible);
    const QString words = StateText(control.BackColor);
    QString toolTip = QString::fromStdString(control.ToolTip);
    if (!words.isEmpty())
        toolTip = toolTip.isEmpty() ? words : toolTip + QLatin1String(" (") + words + QLatin1Char(')');
    widget.setToolTip(toolTip);
    widget.setAccessibleDescription(words);
    // A state button shows its state itself.
    if (!dynamic_cast<StateButton*>(&widget)) ShowBackColor(widget, control.BackColor);
}

}  // namespace bellmark
