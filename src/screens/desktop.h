#pragma once

#include <memory>

#include "platform/clock.h"
#include "platform/machine.h"
#include "platform/portable_machine.h"
#include "platform/timers.h"
#include "screens/qt_dialogs.h"
#include "screens/qt_printer.h"
#include "screens/sounds.h"
#include "screens/timer_driver.h"

namespace bellmark {

class HelpWindow;
class Look;
class MainWindow;
class Preferences;
class Program;

/// The program on a desktop: the machine's services by Qt, the screens in one window.
class Desktop {
  public:
    /// look, preferences: must outlive the desktop.
    Desktop(const Path& programFolder, bool isFirstInstance, Look& look, Preferences& preferences);
    ~Desktop();
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;

    /// From the start form to the end of the program. Returns the exit status.
    int Run();

  private:
    void ShowHelp(int context);
    void ShowWaiting(bool waits);
    void PrintScreen(const std::string& name);
    void OpenWindow();
    void End();

    Look& look_;
    Preferences& preferences_;
    DiskFileSystem files_;
    SystemClock clock_;
    Timers timers_{clock_};
    QtDialogs dialogs_{[this](int context) { ShowHelp(context); }, &preferences_,
                       [this] { sounds_.Give(Signal::NeedsAnswer); }};
    SystemLauncher launcher_;
    QtPrinter printer_;
    Sounds sounds_;
    Random random_;
    TimerDriver timerDriver_{timers_, clock_};
    Machine machine_;
    std::unique_ptr<Program> program_;
    std::unique_ptr<MainWindow> window_;
    std::unique_ptr<HelpWindow> help_;
    bool ended_ = false;
};

}  // namespace bellmark
