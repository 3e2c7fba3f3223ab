#pragma once

#include <QObject>
#include <QString>
#include <functional>
#include <memory>

class QWidget;

namespace bellmark {

class Control;

/// What a link needs from its form.
struct LinkServices {
    std::function<void(const QString&)> tellUser;  ///< why an action was not allowed
    std::function<void()> commitTyping;            ///< passes on typed text of another box of the form
    std::function<void()> changed;                 ///< the program has changed the control
};

/// One control and its widget, for as long as it lives. Refresh shows the control's values; what the user does to the
/// widget goes to the control. Listens only to actions of the user, so that showing a value never comes back as an
/// action.
class Link {
  public:
    Link(Control& control, QObject& view, LinkServices services);
    virtual ~Link();
    Link(const Link&) = delete;
    Link& operator=(const Link&) = delete;

    Control& Bound() const { return control_; }
    QObject& View() const { return view_; }

    virtual void Refresh() = 0;
    virtual void Commit() {}  ///< passes on typed text while the box still has the focus

  protected:
    /// The user acts. If the screen does not allow it, the user is told, and the widget shows the control's own state
    /// again.
    void Perform(const std::function<void()>& action);
    /// The same for everything but typing: text typed elsewhere is passed on first.
    void PerformAfterTyping(const std::function<void()>& action);
    QObject& Context() { return context_; }

  private:
    Control& control_;
    QObject& view_;
    LinkServices services_;
    QObject context_;  // connections end with it
};

/// nullptr when a control of this kind cannot be shown by a widget of this kind.
std::unique_ptr<Link> MakeLink(Control& control, QObject& view, const LinkServices& services);

/// Enabled, visible, tool tip, and the state that the background colour stands for, also in words.
void ShowCommonProperties(const Control& control, QWidget& widget);

}  // namespace bellmark
