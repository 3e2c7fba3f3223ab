#pragma once

#include "platform/machine.h"

namespace bellmark {

/// Starts programs as the operating system does. A Windows program (.exe) on another system is started through wine
/// where that is installed.
class SystemLauncher : public Launcher {
  public:
    std::unique_ptr<RunningProgram> Start(const Path& program, const std::string& arguments) override;
};

/// "Prints" into a text file beside the others of the program folder, pages parted by form feeds; for machines without
/// a printer and for scripts.
class FilePrinter : public Printer {
  public:
    FilePrinter(FileSystem& files, Path file) : files_(files), file_(std::move(file)) {}
    void Print(const std::string& title, const std::vector<std::vector<std::string>>& pages) override;
    void Print(const std::string& title, const FormattedText& text) override;  ///< the text without formatting
    std::optional<std::string> Pdf(const std::string&, const FormattedText&) override { return {}; }

  private:
    FileSystem& files_;
    Path file_;
};

class SilentSound : public Sound {
  public:
    void Play(const Path&) override {}
    void Beep(int, std::chrono::milliseconds) override {}
};

}  // namespace bellmark
