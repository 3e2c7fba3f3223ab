#pragma once

#include <chrono>
#include <functional>
#include <stdexcept>
#include <thread>

#include "console/script_dialogs.h"
#include "platform/clock.h"
#include "platform/machine.h"
#include "platform/portable_machine.h"
#include "platform/timers.h"
#include "tests/support/failing_file_system.h"
#include "tests/support/temporary_folder.h"

namespace bellmark {

/// Prints into a file. It can be told to make "PDF files", which are the letters of the text.
class TestPrinter : public FilePrinter {
  public:
    using FilePrinter::FilePrinter;
    bool makesPdf = false;
    std::optional<std::string> Pdf(const std::string&, const FormattedText& text) override {
        return makesPdf ? std::optional("%PDF " + PlainText(text)) : std::nullopt;
    }
};

/// A machine for one program in a test: an empty program folder, a clock that stands at 9 March 2012, 10:00, dialogs
/// that answer from queues, and a printer that prints into a file.
struct TestMachine {
    TemporaryFolder folder;
    FailingFileSystem files;
    ScriptClock clock;
    Timers timers{clock};
    ScriptDialogs dialogs;
    SystemLauncher launcher;
    TestPrinter printer{files, folder / "Printed.txt"};
    SilentSound sound;
    Random random{1};
    std::function<void()> WhileWaiting;  ///< called each time the program waits
    bool ended = false;                  ///< the program has asked to end

    Machine machine{files,  clock,   timers,  dialogs, launcher,        printer,        sound,
                    random, nullptr, nullptr, nullptr, folder.Folder(), folder.Folder()};

    TestMachine() {
        clock.Set(MakeDateTime(2012, 3, 9, 10));
        machine.yield = [this] { Wait(); };
        machine.showHelp = [](int) {};
        machine.endProgram = [this] { ended = true; };
    }

    /// Lets programs that are started run. They need real time, however fast the program's clock runs.
    void LetProgramsRun() {
        machine.pause = [this] {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
            Advance(std::chrono::milliseconds(20));
            if (WhileWaiting) WhileWaiting();
        };
    }

    /// Advances the clock and runs the timers that are due.
    void Advance(std::chrono::milliseconds step) {
        const auto end = clock.Elapsed() + step;
        while (clock.Elapsed() < end) {
            clock.Advance(std::chrono::milliseconds(1));
            timers.RunDue();
        }
    }

    /// Writes a file in the program folder, with its folders.
    Path Write(const Path& name, std::string_view bytes) {
        files.CreateFolder((folder / name).parent_path());
        files.ReplaceFile(folder / name, bytes);
        return folder / name;
    }
    bool Has(const Path& name) const { return std::filesystem::exists(folder / name); }

  private:
    void Wait() {
        if (++waits_ > 100'000) throw std::runtime_error("the program waits for something that never comes");
        Advance(std::chrono::milliseconds(1));
        if (WhileWaiting) WhileWaiting();
    }

    int waits_ = 0;
};

}  // namespace bellmark
