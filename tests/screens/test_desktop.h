#pragma once

#include <QString>
#include <chrono>
#include <deque>
#include <memory>

#include "app/app_main.h"
#include "app/doors.h"
#include "app/program.h"
#include "assembly/assembly.h"
#include "controls/screen.h"
#include "platform/clock.h"
#include "platform/portable_machine.h"
#include "platform/timers.h"
#include "screens/binder.h"
#include "screens/main_window.h"
#include "screens/page.h"
#include "screens/timer_driver.h"
#include "tests/support/temporary_folder.h"

namespace bellmark {

/// Answers from a queue and records the questions.
class QueuedDialogs : public Dialogs {
  public:
    std::deque<Answer> answers;
    std::deque<Path> files;
    std::deque<std::string> inputs;
    std::vector<MessageBox> shown;

    Answer Show(const MessageBox& message) override {
        shown.push_back(message);
        if (answers.empty()) return Answer::OK;
        const Answer answer = answers.front();
        answers.pop_front();
        return answer;
    }
    std::optional<std::string> Input(const std::string&, const std::string&, const std::string&) override {
        return Next(inputs);
    }
    std::optional<Path> OpenFile(const FileChoice&) override { return Next(files); }
    std::optional<Path> SaveFile(const FileChoice&) override { return Next(files); }
    std::optional<Path> PickFolder(const std::string&, const Path&) override { return Next(files); }

  private:
    template <class Value>
    static std::optional<Value> Next(std::deque<Value>& queue) {
        if (queue.empty()) return {};
        Value value = std::move(queue.front());
        queue.pop_front();
        return value;
    }
};

/// Makes every screen of the assembled program; a screen is made when its door is first asked for.
template <class... Doors>
void MakeScreensBehind(Program& program) {
    (..., (program.Has<Doors>() ? static_cast<void>(program.The<Doors>()) : static_cast<void>(0)));
}
inline void MakeAllScreens(Program& program) {
    MakeScreensBehind<MainFrameDoor, StartFormDoor, MainMenuDoor, SetupDoor, SimulatorDoor, CollectionDoor, DropDoor,
                      PrerequisitesDoor, FlipCalibrationDoor, TriggerDoor, FWDDataDoor, RegressionPlotDoor,
                      ReferenceReviewDoor, CenterRelativeDoor, CenterRelPlotDoor, ResultsDoor, ReportDoor,
                      RelativeResultsDoor, RelativeDoor>(program);
}

/// The whole program in its window, on its own folder, with answers from a queue.
class TestDesktop {
  public:
    /// prepare: fills the program folder before the program looks at it.
    explicit TestDesktop(std::chrono::milliseconds simulatedCapture = {},
                         const std::function<void(const Path&)>& prepare = {})
        : timerDriver_(timers_, clock_) {
        if (prepare) prepare(folder_.Folder());
        machine_.yield = [this] { timerDriver_.Yield(); };
        machine_.simulatedCapture = simulatedCapture;
        machine_.showHelp = [](int) {};
        machine_.endProgram = [this] {
            ended = true;
            program->Run.DropAborted = true;
        };
        program = AssembleProgram(machine_);
    }
    ~TestDesktop() {
        window.reset();
        program.reset();
    }
    TestDesktop(const TestDesktop&) = delete;

    /// restOfAccept: 0 except in tests of the delay itself, so that tests can answer at once.
    void Start(std::chrono::milliseconds restOfAccept = {}) {
        Main(*program);
        window = std::make_unique<MainWindow>(
            program->Screens, *program->Screens.Find("frmMaster"),
            [this](const QString& why) { refusals.push_back(why.toStdString()); }, restOfAccept);
        window->resize(1280, 800);
        window->show();
    }

    /// The widget of a control, "frmMainMenu.cmdQuit".
    QWidget& WidgetOf(const std::string& screenName, const std::string& controlName) {
        Screen& screen = *program->Screens.Find(screenName);
        QWidget* widget = window->PageOf(screen)->Bindings().WidgetOf(*screen.Find(controlName));
        if (!widget) throw std::logic_error(screenName + '.' + controlName + " has no widget");
        return *widget;
    }

    /// Text of a control in the logic.
    std::string TextOf(const std::string& screenName, const std::string& controlName) {
        return program->Screens.Find(screenName)->Find(controlName)->DisplayText();
    }

    const Path& Folder() const { return folder_.Folder(); }

    QueuedDialogs dialogs;
    std::vector<std::string> refusals;
    bool ended = false;
    std::unique_ptr<Program> program;
    std::unique_ptr<MainWindow> window;

  private:
    TemporaryFolder folder_;
    DiskFileSystem files_;
    SystemClock clock_;
    Timers timers_{clock_};
    SystemLauncher launcher_;
    FilePrinter printer_{files_, folder_ / "Printed.txt"};
    SilentSound sound_;
    Random random_{1};
    TimerDriver timerDriver_;
    Machine machine_{files_,  clock_, timers_, dialogs, launcher_,        printer_,        sound_,
                     random_, {},     {},      {},      folder_.Folder(), folder_.Folder()};
};

}  // namespace bellmark
