#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "platform/files.h"
#include "platform/formatted_text.h"

/// What the logic asks of the machine besides files, clock and dialogs.
namespace bellmark {

class Clock;
class Dialogs;
class Timers;

/// A program started by this one.
class RunningProgram {
  public:
    virtual ~RunningProgram() = default;
    virtual bool HasEnded() = 0;
    virtual int ExitStatus() const = 0;  ///< once it has ended
    virtual void Kill() = 0;             ///< with every program that it has started itself
};

class Launcher {
  public:
    virtual ~Launcher() = default;
    /// Throws FileError when the program cannot be started.
    virtual std::unique_ptr<RunningProgram> Start(const Path& program, const std::string& arguments) = 0;
};

/// Paper, for reports and for certificates.
class Printer {
  public:
    virtual ~Printer() = default;

    /// Pages of fixed-pitch text, each a list of lines.
    virtual void Print(const std::string& title, const std::vector<std::vector<std::string>>& pages) = 0;

    /// A formatted text on a printer that the user may choose, page by page.
    virtual void Print(const std::string& title, const FormattedText& text) = 0;
    /// The bytes of a PDF file of a formatted text; nothing where none can be made.
    virtual std::optional<std::string> Pdf(const std::string& title, const FormattedText& text) = 0;
};

class Sound {
  public:
    virtual ~Sound() = default;
    virtual void Play(const Path& file) = 0;
    virtual void Beep(int hertz, std::chrono::milliseconds length) = 0;
};

/// Uniform random numbers in [0, 1), the same sequence for the same seed on every machine.
class Random {
  public:
    explicit Random(std::uint64_t seed) : engine_(seed) {}
    double Next() { return static_cast<double>(engine_() >> 11) * 0x1.0p-53; }

  private:
    std::mt19937_64 engine_;
};

/// 1 or -1 with even chance.
inline int RandomSign(Random& random) {
    return 0.5 > random.Next() ? 1 : -1;
}

/// Pages of the help. That of a numbered message is firstMessage plus its number.
namespace helpPage {
inline constexpr int contents = 0;
inline constexpr int index = 1;
inline constexpr int firstMessage = 10000;
}  // namespace helpPage

/// The services that one program runs on. They outlive it.
struct Machine {
    FileSystem& files;
    Clock& clock;
    Timers& timers;
    Dialogs& dialogs;
    Launcher& launcher;
    Printer& printer;
    Sound& sound;
    Random& random;
    std::function<void()> yield;  ///< runs due timers and pending events; called while something is waited for
    std::function<void(int context)> showHelp;  ///< opens a page of the help
    std::function<void()> endProgram;           ///< called last
    Path programFolder;
    Path startDirectory;
    bool isFirstInstance = true;  ///< no other program works on the program folder

    /// How long the simulated board takes to deliver a block. An operator wants to see the armed screen, a script does
    /// not.
    std::chrono::milliseconds simulatedCapture{0};

    /// Puts a screen on paper as it is shown, by its name.
    std::function<void(const std::string& screen)> printScreen = [](const std::string&) {};

    /// While true, the screen is up to date and shows a waiting pointer, because files are being worked on.
    std::function<void(bool waits)> showWaiting = [](bool) {};

    /// Lets a moment pass, with timers and events served, while another program works.
    std::function<void()> pause = [] {};
};

}  // namespace bellmark
