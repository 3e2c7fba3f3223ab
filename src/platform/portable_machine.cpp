#include "platform/portable_machine.h"

#include <string>
#include <utility>

#include "platform/file_text.h"
#include "platform/text.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <csignal>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#endif

namespace bellmark {

void FilePrinter::Print(const std::string& title, const std::vector<std::vector<std::string>>& pages) {
    std::string text = title + "\r\n";
    for (const auto& page : pages) {
        for (const auto& line : page) text += line + "\r\n";
        text += '\f';
    }
    files_.AppendToFile(file_, ToWindows1252(WithoutUnstorable(text).text));
}

void FilePrinter::Print(const std::string& title, const FormattedText& text) {
    Print(title, {Split(PlainText(text), '\n')});
}

#ifdef _WIN32

namespace {

class WindowsProgram : public RunningProgram {
  public:
    /// job: holds the process and all that it starts.
    WindowsProgram(HANDLE process, HANDLE job) : process_(process), job_(job) {}
    ~WindowsProgram() override {
        CloseHandle(process_);
        CloseHandle(job_);
    }
    bool HasEnded() override { return WaitForSingleObject(process_, 0) == WAIT_OBJECT_0; }
    int ExitStatus() const override {
        DWORD status = 0;
        GetExitCodeProcess(process_, &status);
        return static_cast<int>(status);
    }
    void Kill() override { TerminateJobObject(job_, 1); }

  private:
    HANDLE process_;
    HANDLE job_;
};

}  // namespace

std::unique_ptr<RunningProgram> SystemLauncher::Start(const Path& program, const std::string& arguments) {
    std::wstring command = L"\"" + program.wstring() + L"\" " + PathFromText(arguments).wstring();
    STARTUPINFOW start{};
    start.cb = sizeof(start);
    PROCESS_INFORMATION process{};
    // Started suspended, so that it is in its job before it can start others.
    if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, CREATE_SUSPENDED, nullptr, nullptr, &start,
                        &process)) {
        throw FileError(program, "could not be started");
    }
    HANDLE job = CreateJobObjectW(nullptr, nullptr);
    AssignProcessToJobObject(job, process.hProcess);
    ResumeThread(process.hThread);
    CloseHandle(process.hThread);
    return std::make_unique<WindowsProgram>(process.hProcess, job);
}

#else

namespace {

class PosixProgram : public RunningProgram {
  public:
    /// process: leads a group of its own, with all that it starts.
    explicit PosixProgram(pid_t process) : process_(process) {}
    ~PosixProgram() override {
        // A program that still runs goes on by itself; an ended one must be waited for, or it stays as a zombie.
        if (!ended_) waitpid(process_, nullptr, WNOHANG);
    }
    bool HasEnded() override {
        int status = 0;
        if (!ended_ && waitpid(process_, &status, WNOHANG) == process_) {
            ended_ = true;
            exitStatus_ = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
        }
        return ended_;
    }
    int ExitStatus() const override { return exitStatus_; }
    void Kill() override {
        if (ended_) return;
        kill(-process_, SIGKILL);
        waitpid(process_, nullptr, 0);
        ended_ = true;
        exitStatus_ = 128 + SIGKILL;
    }

  private:
    pid_t process_;
    bool ended_ = false;
    int exitStatus_ = 0;
};

/// The words of a command line. The whole line is one word, so that a file name arrives unchanged, with its blanks and
/// quotes. wine would put quotes around a word with blanks, which a Windows converter does not expect. For wine the
/// line is split at each single blank, and wine joins the words again.
std::vector<std::string> CommandWords(const std::string& line, bool forWine) {
    if (line.empty()) return {};
    const bool survivesWine = line.find("  ") == std::string::npos && line.find('"') == std::string::npos;
    return forWine && survivesWine ? Split(line, ' ') : std::vector<std::string>{line};
}

bool IsOnSearchPath(const std::string& program) {
    const char* search = std::getenv("PATH");
    for (const auto& folder : Split(search ? search : "", ':')) {
        if (access((folder + "/" + program).c_str(), X_OK) == 0) return true;
    }
    return false;
}

/// Whether a file is a Windows program, which the system itself cannot run: its first two letters say so.
bool IsWindowsProgram(const Path& program) {
    const int file = open(program.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0) return false;
    std::array<char, 2> mark{};
    const bool isWindows = read(file, mark.data(), mark.size()) == 2 && mark[0] == 'M' && mark[1] == 'Z';
    close(file);
    return isWindows;
}

}  // namespace

std::unique_ptr<RunningProgram> SystemLauncher::Start(const Path& program, const std::string& arguments) {
    const bool forWine = IsWindowsProgram(program);
    std::vector<std::string> words = CommandWords(arguments, forWine);
    words.insert(words.begin(), program.string());
    if (forWine) {
        if (!IsOnSearchPath("wine")) throw FileError(program, "is a Windows program, and wine is not installed");
        words.insert(words.begin(), "wine");
    }
    std::vector<char*> parameters;
    for (auto& word : words) parameters.push_back(word.data());
    parameters.push_back(nullptr);

    // The pipe closes by itself when the program starts; otherwise it carries the reason.
    std::array<int, 2> pipeEnds{};
    if (pipe2(pipeEnds.data(), O_CLOEXEC) != 0) throw FileError(program, "could not be started");
    const pid_t process = fork();
    if (process == 0) {
        setpgid(0, 0);
        execvp(parameters[0], parameters.data());
        const int reason = errno;
        const auto written = write(pipeEnds[1], &reason, sizeof(reason));
        _exit(written == sizeof(reason) ? 127 : 126);
    }
    close(pipeEnds[1]);
    int reason = 0;
    const auto got = process < 0 ? ssize_t{sizeof(reason)} : read(pipeEnds[0], &reason, sizeof(reason));
    close(pipeEnds[0]);
    if (got == sizeof(reason)) {
        if (process > 0) waitpid(process, nullptr, 0);
        throw FileError(program, "could not be started: " + std::string(std::strerror(reason)));
    }
    return std::make_unique<PosixProgram>(process);
}

#endif

}  // namespace bellmark
