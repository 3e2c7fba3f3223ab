#include "screens/desktop.h"

#include <QApplication>
#include <QMenu>
#include <QThread>
#include <chrono>
#include <random>

#include "app/app_main.h"
#include "app/program.h"
#include "assembly/assembly.h"
#include "controls/screen.h"
#include "screens/help_window.h"
#include "screens/look.h"
#include "screens/main_window.h"
#include "screens/page.h"
#include "screens/preferences.h"
#include "screens/view_menu.h"

namespace bellmark {

namespace {

/// The armed screen of a simulated drop stays visible for this time.
constexpr std::chrono::milliseconds simulatedCapture{1500};

constexpr QSize firstSize{1280, 800};

}  // namespace

Desktop::Desktop(const Path& programFolder, bool isFirstInstance, Look& look, Preferences& preferences)
    : look_(look),
      preferences_(preferences),
      random_(std::random_device()()),
      machine_{files_,
               clock_,
               timers_,
               dialogs_,
               launcher_,
               printer_,
               sounds_,
               random_,
               {},
               {},
               {},
               programFolder,
               std::filesystem::current_path(),
               isFirstInstance,
               simulatedCapture} {
    machine_.yield = [this] { timerDriver_.Yield(); };
    machine_.pause = [this] {
        QThread::msleep(10);
        timerDriver_.Yield();
    };
    machine_.showWaiting = [this](bool waits) { ShowWaiting(waits); };
    machine_.showHelp = [this](int context) { ShowHelp(context); };
    machine_.printScreen = [this](const std::string& screen) { PrintScreen(screen); };
    machine_.endProgram = [this] { End(); };
    sounds_.SetOn(preferences_.HasSounds());
    program_ = AssembleProgram(machine_);
}

Desktop::~Desktop() {
    // The window shows data of the program, so it is destroyed first.
    window_.reset();
}

int Desktop::Run() {
    Main(*program_);
    if (ended_) return 0;
    OpenWindow();
    return QApplication::exec();
}

void Desktop::OpenWindow() {
    window_ = std::make_unique<MainWindow>(program_->Screens, *program_->Screens.Find("frmMaster"),
                                           [this](const QString& why) {
                                               dialogs_.Show({why.toStdString(), box::exclamation, "Bellmark", 0});
                                           });
    dialogs_.SetParent(window_.get());
    FillViewMenu(*window_->findChild<QMenu*>(QStringLiteral("decorView")), look_, sounds_, preferences_);
    window_->OnSignal([this](Signal signal) { sounds_.Give(signal); });
    window_->OnFile([this](const Path& file, const std::function<void()>& action) { dialogs_.Give(file, action); });
    window_->resize(firstSize);
    if (window_->restoreGeometry(preferences_.WindowGeometry())) {
        window_->show();
    } else {
        window_->showMaximized();
    }
}

void Desktop::ShowHelp(int context) {
    if (!help_) help_ = std::make_unique<HelpWindow>();
    const Screen* front = context == helpPage::contents && window_ ? program_->Screens.Front() : nullptr;
    if (front) {
        help_->ShowScreen(QString::fromStdString(front->Name()));
    } else {
        help_->ShowContext(context);
    }
}

void Desktop::ShowWaiting(bool waits) {
    if (waits) {
        QApplication::setOverrideCursor(Qt::WaitCursor);
    } else {
        QApplication::restoreOverrideCursor();
    }
    if (window_) window_->ShowWaiting(waits);
    // Painted at once; input of the operator waits meanwhile.
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void Desktop::PrintScreen(const std::string& name) {
    Screen* screen = program_->Screens.Find(name);
    QWidget* page = screen && window_ ? window_->PageOf(*screen) : nullptr;
    const LightLook paper(look_);
    if (page) printer_.PrintScreen(screen->Title(), *page);
}

void Desktop::End() {
    ended_ = true;
    if (window_) {
        preferences_.KeepWindowGeometry(window_->saveGeometry());
        window_->hide();
    }
    QCoreApplication::quit();
}

}  // namespace bellmark
