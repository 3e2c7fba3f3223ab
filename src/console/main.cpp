#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "app/app_main.h"
#include "app/program.h"
#include "assembly/assembly.h"
#include "console/printed_screen.h"
#include "console/script.h"
#include "console/script_dialogs.h"
#include "console/script_runner.h"
#include "controls/screen.h"
#include "platform/clock.h"
#include "platform/command_line.h"
#include "platform/instance_lock.h"
#include "platform/portable_machine.h"
#include "platform/timers.h"

namespace {

using namespace bellmark;

constexpr const char* helpText = R"(bellmark-console --folder PROGRAM_FOLDER [--echo | --progress] SCRIPT

Runs Bellmark by a script of an operator's actions. SCRIPT is a file, or - for standard input. --echo prints each line and
each message box as it comes, --progress the comments on lines of their own. One command per line, # starts a comment, texts are in double quotes with \", \\ and \n.
A control C is screen.control or screen.control(index).

  click C                      clicks a button, option, check box, label or cell of a screen
  click C ROW [COL]            clicks a grid cell; rows count from 0, fixed rows included
  doubleclick C ROW COL
  set C "text"                 types into a text box and leaves it
  set C ROW COL "text"         edits a grid cell
  choose C INDEX               picks an entry of a list, counted from 0
  choose C "item"
  answer OK                    queues the answer of the next message box: OK, Cancel, Yes or No
  file "path"                  queues the answer of the next file dialog
  file cancel
  folder "path"                queues the answer of the next folder dialog
  folder cancel
  input "text"                 queues the answer of the next input box
  show C                       prints the text or caption; a grid prints its rows, cells separated by tabs
  show C.PROPERTY              BackColor, Enabled, Visible or ToolTip; show SCREEN.BackColor
  show C.BackColor ROW COL     the colour of a grid cell as R,G,B
  expect C "text"              fails the script when it differs; also with C.PROPERTY
  cell C ROW COL               prints one cell
  expectcell C ROW COL "text"
  front                        prints the name of the screen in front
  expectfront SCREEN
  boxes                        prints every message box since the last boxes: title, text, style and answer
  clock "2012-03-09 10:00:00"  sets the program's clock; it stands still until it is set or advanced
  advance MILLISECONDS         moves the clock on and runs the timers that fall due
  enter                        presses the button that Enter presses on the screen in front: the one that the screen gave
                               the keyboard, otherwise the one of the next step
  repeat N                     runs the lines down to its end N times, N from 1; loops may lie in one another
  end                          $i in a repeated line is the number of the turn, from 1, in the innermost loop
  quit                         ends as the close box would

While the program waits for something, the following lines run: that is how a script aborts a wait.
A line that fails prints the script's name, the line number and why, and ends with exit status 1.
Exit status 0 means that every line held, 2 that the command line was wrong.
)";

struct Options {
    std::optional<Path> folder;
    std::optional<std::string> script;
    bool echo = false;
    bool progress = false;
    bool help = false;
    std::string problem;
};

Options ReadOptions(const std::vector<std::string>& words) {
    Options options;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (words[i] == "--help" || words[i] == "-h") {
            options.help = true;
        } else if (words[i] == "--echo") {
            options.echo = true;
        } else if (words[i] == "--progress") {
            options.progress = true;
        } else if (words[i] == "--folder" && i + 1 < words.size()) {
            options.folder = PathFromText(words[++i]);
        } else if (!options.script && (words[i] == "-" || words[i].rfind('-', 0) != 0)) {
            options.script = words[i];
        } else {
            options.problem = "\"" + words[i] + "\" is not understood here";
        }
    }
    if (options.problem.empty() && !options.folder) options.problem = "--folder is missing";
    if (options.problem.empty() && !options.script) options.problem = "the script is missing";
    return options;
}

std::string ReadScriptText(const std::string& name) {
    if (name == "-") return {std::istreambuf_iterator<char>(std::cin), {}};
    return DiskFileSystem().ReadBytes(PathFromText(name));
}

int RunScript(const Options& options) {
    const std::string name = *options.script == "-" ? "standard input" : *options.script;
    DiskFileSystem files;
    ScriptClock clock;
    Timers timers(clock);
    ScriptDialogs dialogs;
    SystemLauncher launcher;
    const Path folder = std::filesystem::absolute(*options.folder);
    FilePrinter printer(files, folder / "BellmarkPrinted.txt");
    SilentSound sound;
    // The same seed each time, so that a script gives the same result again.
    Random random(1);
    const InstanceLock lock(folder);
    ScriptRunner* runner = nullptr;
    bool ended = false;
    Machine machine{files,
                    clock,
                    timers,
                    dialogs,
                    launcher,
                    printer,
                    sound,
                    random,
                    {},
                    {},
                    {},
                    folder,
                    std::filesystem::current_path(),
                    lock.IsFirst()};
    machine.yield = [&] {
        timers.RunDue();
        runner->TakeTurn();
    };
    machine.pause = [&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
        timers.RunDue();
    };
    machine.showHelp = [](int context) { std::cout << "help " << context << '\n'; };
    machine.endProgram = [&] {
        ended = true;
        if (runner) runner->ProgramHasEnded();
    };
    try {
        const auto lines = ReadScript(ReadScriptText(*options.script));
        const auto program = AssembleProgram(machine);
        machine.printScreen = [&](const std::string& screenName) {
            const Screen& screen = *program->Screens.Find(screenName);
            printer.Print(screen.Title(), {PrintedLines(screen)});
        };
        ScriptRunner scriptRunner(*program, dialogs, clock, std::cout);
        scriptRunner.echo = options.echo;
        scriptRunner.progress = options.progress;
        runner = &scriptRunner;
        Main(*program);
        if (ended) {
            std::cerr << (lock.Problem().empty() ? "Another Bellmark works on " + PathText(folder) + '.'
                                                 : lock.Problem())
                      << '\n';
            return 1;
        }
        scriptRunner.Run(lines);
        return 0;
    } catch (const ScriptError& error) {
        std::cout.flush();
        std::cerr << name << ':' << error.Line() << ": " << error.what() << '\n';
    } catch (const ScriptStop& stop) {
        std::cout.flush();
        std::cerr << name << ": at start: " << stop.why << '\n';
    } catch (const std::exception& error) {
        std::cout.flush();
        std::cerr << name << ": " << error.what() << '\n';
    }
    return 1;
}

}  // namespace

int main(int count, char** words) {
    const Options options = ReadOptions(CommandLineWords(count, words));
    if (options.help) {
        std::cout << helpText;
        return 0;
    }
    if (!options.problem.empty()) {
        std::cerr << "bellmark-console: " << options.problem << ". See bellmark-console --help.\n";
        return 2;
    }
    if (!std::filesystem::is_directory(*options.folder)) {
        std::cerr << "bellmark-console: there is no folder " << PathText(*options.folder) << ".\n";
        return 2;
    }
    return RunScript(options);
}
