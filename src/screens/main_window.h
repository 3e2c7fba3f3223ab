#pragma once

#include <QMainWindow>
#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "platform/files.h"
#include "screens/press_guard.h"
#include "screens/sounds.h"

class QAction;
class QLabel;
class QStackedWidget;

namespace bellmark {

class Binder;
class Button;
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

    /// Says in the bottom line that files are being worked on.
    void ShowWaiting(bool waits);

    /// Called when the state of the screen in front changes into one that the operator may want to hear.
    void OnSignal(std::function<void(Signal)> give) { giveSignal_ = std::move(give); }

    /// Called with a file that was dropped on a screen with a Browse button for FWD files, and the press of that
    /// button.
    using FileGiver = std::function<void(const Path&, const std::function<void()>&)>;
    void OnFile(FileGiver give) { giveFile_ = std::move(give); }

  protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    void FollowPage();
    Button* BrowseButton() const;
    void ShowLock();
    void ShowSuggestedStep(const Page* page);
    void YieldLetters(const Page* page);

    ScreenStack& screens_;
    Screen& mainFrame_;
    std::function<void(const QString&)> tellUser_;
    PressGuard guard_;
    std::function<void(Signal)> giveSignal_ = [](Signal) {};
    FileGiver giveFile_;
    bool isWaiting_ = false;
    QStackedWidget* pages_ = nullptr;
    QLabel* nextStep_ = nullptr;
    std::unique_ptr<Binder> menuBinder_;
    std::vector<std::pair<QAction*, QString>> menuTitles_;
    std::map<const Screen*, Page*> built_;
};

}  // namespace bellmark
