#pragma once

#include <QKeySequence>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <memory>
#include <optional>

#include "controls/color.h"
#include "screens/sounds.h"

class QScrollArea;

namespace bellmark {

class Binder;
class Control;
class Screen;

/// One screen in the main window: the page header, where the screen has one, and the screen's form.
class Page : public QWidget {
    Q_OBJECT

  public:
    Page(Screen& screen, std::unique_ptr<QWidget> form, std::function<void(const QString&)> tellUser);
    ~Page() override;

    const Binder& Bindings() const { return *binder_; }
    Screen& Shown() const { return screen_; }

    /// The caption of the suggested step's button; empty when there is none.
    QString SuggestedStep() const;
    /// True when Enter takes that step. Another button or a list with the keyboard handles Enter itself.
    bool EnterSuggests() const;

    /// True when a button that can be pressed now has these keys: Alt and a letter of its caption.
    bool TakesKeys(const QKeySequence& keys) const;

    /// Gives the keyboard to the control that the screen chose.
    void TakeFocus();

  signals:
    void Refreshed();
    void Signalled(Signal signal);

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    void Follow();
    void MarkBackground();
    void TellState();
    void MarkSuggestedStep();
    void EquipPlots();
    QStringList RunLines() const;
    Control* HasKeyboard() const;  ///< null when none of the screen's controls has it

    Screen& screen_;
    QScrollArea* scroll_ = nullptr;
    QWidget* form_ = nullptr;
    QWidget* foot_ = nullptr;  ///< the row of buttons below what scrolls; none in some forms
    bool backgroundIsState_ = false;
    std::optional<Signal> told_;
    std::unique_ptr<Binder> binder_;
    int focusRequestsMet_ = 0;
    QTimer soon_;
};

}  // namespace bellmark
