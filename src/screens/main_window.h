#pragma once

#include <QMainWindow>
#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "screens/press_guard.h"

class QAction;
class QLabel;
class QStackedWidget;

namespace bellmark {

class Binder;
class Page;
class Screen;
class ScreenStack;

/// The one window: the menus of the main frame, the screen in front, and the suggested next step.
class MainWindow : public QMainWindow {
    Q_OBJECT

  public:
    /// restOfAccept: time before Accept reacts after a new drop has come, so that the operator has seen the drop.
    MainWindow(ScreenStack& screens, Screen& mainFrame, std::function<void(const QString&)> tellUser,
               std::chrono::milliseconds restOfAccept = std::chrono::milliseconds(300));
    ~MainWindow() override;

    /// The page of a screen, built when it is first asked for. A form that does not fit its screen is reported as a
    /// failure.
    Page* PageOf(Screen& screen);
    const Binder& MenuBindings() const { return *menuBinder_; }

    /// Shows the screen in front.
    void ShowFront();

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    void FollowPage();
    void ShowLock();
    void ShowSuggestedStep(const Page* page);
    void YieldLetters(const Page* page);

    ScreenStack& screens_;
    Screen& mainFrame_;
    std::function<void(const QString&)> tellUser_;
    PressGuard guard_;
    QStackedWidget* pages_ = nullptr;
    QLabel* nextStep_ = nullptr;
    std::unique_ptr<Binder> menuBinder_;
    std::vector<std::pair<QAction*, QString>> menuTitles_;
    std::map<const Screen*, Page*> built_;
};

}  // namespace bellmark
