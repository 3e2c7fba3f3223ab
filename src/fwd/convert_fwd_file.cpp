#include "fwd/convert_fwd_file.h"

#include "app/doors.h"
#include "app/program.h"
#include "app/save_text.h"
#include "fwd/f25_file.h"
#include "pddx/pddx_file.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/numbers.h"
#include "run/paths.h"

namespace bellmark {

namespace {

constexpr std::chrono::seconds longestWait{60};

bool AreEqual(const FileSystem& files, const Path& one, const Path& other) {
    return files.ReadBytes(one) == files.ReadBytes(other);
}

/// A name derived from the file's that is free in the folder: "Trial-1.F25".
Path FreeName(const FileSystem& files, const Path& folder, const Path& file) {
    for (int n = 1;; ++n) {
        Path name = file.stem();
        name += "-" + NumberText(n);
        name += file.extension();
        if (!files.IsFile(ActualPath(files, folder / name))) return name;
    }
}

/// Copies the file into the run's data folder and returns the copy. Nothing when the operator does not want one: a file
/// of that name in the folder belongs to the run and stays.
std::optional<Path> CopyToDataFolder(Program& program, const Path& file) {
    FileSystem& files = program.Services.files;
    const Path folder = program.InterimFolder();
    files.CreateFolder(folder);
    Path copy = ActualPath(files, folder / file.filename());
    if (copy == file) return copy;
    if (files.IsFile(copy)) {
        if (AreEqual(files, copy, file)) return copy;
        const Path free = FreeName(files, folder, file);
        const std::string question = "This calibration has another file of the name " + PathText(file.filename()) +
                                     " already.\r\nDo you want to add the chosen file as " + PathText(free) + '?';
        if (program.ShowBox(question, box::yesNo + box::exclamation) != Answer::Yes) return {};
        copy = folder / free;
    }
    files.CopyFile(file, copy);
    return copy;
}

Path ConvertedName(const Path& file) {
    Path name = file;
    name.replace_extension();
    name += "cvt.ddx";
    return name;
}

/// Shows on the main frame what the program waits for, as long as it lives.
class WaitingNotice {
  public:
    WaitingNotice(Program& program, const std::string& text) : frame_(program.The<MainFrameDoor>()) {
        frame_.BeginWaiting(text);
    }
    ~WaitingNotice() { frame_.EndWaiting(); }
    WaitingNotice(const WaitingNotice&) = delete;
    WaitingNotice& operator=(const WaitingNotice&) = delete;
    bool Cancelled() const { return frame_.WaitingCancelled(); }

  private:
    MainFrameDoor& frame_;
};

/// Sets the old document aside until the new one exists; put back when there is none.
class OldDocument {
  public:
    OldDocument(FileSystem& files, const Path& document) : files_(files), document_(document), aside_(document) {
        aside_ += ".old";
        if (files_.IsFile(document_)) files_.Rename(document_, aside_);
    }
    ~OldDocument() {
        try {
            if (!files_.IsFile(aside_)) return;
            if (files_.IsFile(document_)) {
                files_.RemoveFile(aside_);
            } else {
                files_.Rename(aside_, document_);
            }
        } catch (const FileError&) {
            // It stays beside the other, under a name that says what it is.
        }
    }
    OldDocument(const OldDocument&) = delete;
    OldDocument& operator=(const OldDocument&) = delete;

  private:
    FileSystem& files_;
    Path document_;
    Path aside_;
};

/// Why the converter made no document; empty when it did.
std::string RunConverter(Program& program, const Path& file, int fileType, const Path& document) {
    Machine& machine = program.Services;
    const auto converter = machine.launcher.Start(ActualPath(machine.files, program.Folder() / converterName),
                                                  PathText(file) + ',' + NumberText(fileType));
    const WaitingNotice notice(program, "Converting " + PathText(file.filename()) + " ...");
    const auto begun = machine.clock.Elapsed();
    while (!converter->HasEnded()) {
        if (notice.Cancelled() || machine.clock.Elapsed() - begun > longestWait) {
            converter->Kill();
            // It may be incomplete.
            machine.files.RemoveFile(document);
            return notice.Cancelled() ? "The conversion was cancelled."
                                      : "The converter did not end within 60 seconds.";
        }
        machine.pause();
    }
    if (machine.files.IsFile(document)) return {};
    return converter->ExitStatus() == 0
               ? "The converter ended without writing a document."
               : "The converter failed (status " + NumberText(converter->ExitStatus()) + ") and wrote no document.";
}

/// Whether the program reads a file of a form that it knows. Where there is a converter, too, the operator is asked,
/// once after each start.
bool ReadsItself(Program& program, const Path& file) {
    if (!IsF25(program.Services.files.ReadBytes(file))) return false;
    std::optional<bool>& chosen = program.Run.ReadsF25Files;
    if (!program.Services.files.IsFile(ActualPath(program.Services.files, program.Folder() / converterName)))
        return true;
    if (!chosen) {
        chosen = program.ShowBox(
                     "This is an F25 file. Bellmark reads such files itself.\r\nDo you want the converter to "
                     "read this one and those to come?",
                     box::yesNo + box::question + box::secondIsDefault, "F25") == Answer::No;
    }
    return *chosen;
}

/// Why the file could not be read; empty when its document was written.
std::string WriteDocumentOfF25(Program& program, const Path& file, const Path& path) {
    FileSystem& files = program.Services.files;
    try {
        PDDXFile document;
        FillDocument(ReadF25(files.ReadBytes(file)), program.Run.EnglishUnits, document);
        std::string text;
        document.PDDX_Output(text);
        SaveText(program, path, text);
        return {};
    } catch (const F25Error& error) {
        return error.what();
    }
}

}  // namespace

bool CheckReportOverwrite(Program& program, const Path& path) {
    if (!program.Services.files.IsFile(path)) return true;
    const std::string question = "The file " + PathText(path.filename()) +
                                 " already exist.\r\nDo you want to replace the existing file?\r\n"
                                 "If you say NO, please save existing file with a new name.";
    return program.ShowBox(question, box::yesNo + box::exclamation) == Answer::Yes;
}

bool CheckReportsOverwrite(Program& program, const std::vector<Path>& paths) {
    std::vector<Path> existing;
    for (const Path& path : paths) {
        if (program.Services.files.IsFile(path)) existing.push_back(path);
    }
    if (existing.empty()) return true;
    if (existing.size() == 1) return CheckReportOverwrite(program, existing.front());
    std::string question = "These files already exist:\r\n";
    for (const Path& path : existing) question += "     " + PathText(path.filename()) + "\r\n";
    question +=
        "Do you want to replace the existing files?\r\nIf you say NO, please save existing files with new names.";
    return program.ShowBox(question, box::yesNo + box::exclamation) == Answer::Yes;
}

Conversion ConvertFWDFile(Program& program, const Path& file, int fileType, bool copyIntoRun) {
    const Conversion unchanged{file, false, false};
    std::string problem, title = "Ferrylink";
    try {
        const auto source = copyIntoRun ? CopyToDataFolder(program, file) : file;
        if (!source) return {file, false, true};
        const Path document = ConvertedName(*source);
        if (!CheckReportOverwrite(program, document)) return unchanged;
        const OldDocument old(program.Services.files, document);
        const bool readsItself = ReadsItself(program, *source);
        if (readsItself) title = "F25";
        problem = readsItself ? WriteDocumentOfF25(program, *source, document)
                              : RunConverter(program, *source, fileType, document);
        if (problem.empty()) return {document, true, false};
    } catch (const FileError& error) {
        problem = error.what();
    }
    program.ShowBox("The file " + PathText(file.filename()) + " could not be converted.\r\n" + problem, box::critical,
                    title);
    return {file, false, true};
}

}  // namespace bellmark
