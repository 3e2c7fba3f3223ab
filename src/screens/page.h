#pragma once

#include <QKeySequence>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <memory>

#include "controls/color.h"

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

    /// The step that the screen suggests, as its button says it; empty when it suggests none.
    QString SuggestedStep() const;
    /// Enter takes that step; where it has the keyboard, another button or a list keeps Enter for itself.
    bool EnterSuggests() const;

    /// A button that can be pressed now has these keys, Alt and a letter of its caption.
    bool TakesKeys(const QKeySequence& keys) const;

    /// Puts the keyboard where the screen wants it.
    void TakeFocus();

  signals:
    void Refreshed();

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    void Follow();
    void MarkSuggestedStep();
    Control* HasKeyboard() const;  ///< null when it is with none of the screen's controls

    Screen& screen_;
    QScrollArea* scroll_ = nullptr;
    std::unique_ptr<Binder> binder_;
    int focusRequestsMet_ = 0;
    QTimer soon_;
};

}  // namespace bellmark
