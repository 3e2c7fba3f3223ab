#pragma once

#include <QStringList>
#include <functional>
#include <memory>
#include <vector>

class QWidget;

namespace bellmark {

class Control;
class Link;
class Screen;

/// Mismatches between a screen and its form. All four lists are empty for a correct form.
struct BindingReport {
    QStringList missing;      ///< controls without a widget
    QStringList ambiguous;    ///< controls with several
    QStringList unsupported;  ///< controls whose widget is of the wrong kind
    QStringList unbound;      ///< named widgets without a control
    bool IsClean() const {
        return missing.isEmpty() && ambiguous.isEmpty() && unsupported.isEmpty() && unbound.isEmpty();
    }
    QString Text() const;
};

/// Pairs the controls of a screen with the widgets of its form by name, shows the controls' values and passes on what
/// the user does, for as long as it lives. It must be destroyed before both. Control "lblZeroCalc(0)" is widget
/// "lblZeroCalc_0"; purely decorative widgets have names that begin with "decor", or none.
class Binder {
  public:
    /// tellUser shows why the screen does not allow an action. changed is called after each change that the program
    /// makes to a control.
    Binder(Screen& screen, QWidget& form, std::function<void(const QString&)> tellUser,
           std::function<void()> changed = {});
    ~Binder();
    Binder(const Binder&) = delete;
    Binder& operator=(const Binder&) = delete;

    const BindingReport& Report() const { return report_; }
    QWidget* WidgetOf(const Control& control) const;  ///< nullptr for a control without a widget

    /// Passes on typed text of a box that still has the focus: for actions that do not take the focus away from it.
    void CommitTyping() const;

    static QString WidgetName(const std::string& controlName);

  private:
    void Bind(Control& control);
    void FindUnbound();

    Screen& screen_;
    QWidget& form_;
    std::function<void(const QString&)> tellUser_;
    std::function<void()> changed_;
    BindingReport report_;
    std::vector<std::unique_ptr<Link>> links_;
};

}  // namespace bellmark
