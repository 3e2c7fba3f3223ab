#include "app/journal.h"

#include "app/program.h"
#include "platform/format.h"
#include "platform/numbers.h"

namespace bellmark {

namespace {

constexpr std::size_t longestEvent = 500;  ///< bytes; a message is known by its beginning

/// On one line and without tabs, which separate the fields.
std::string OnOneLine(const std::string& text) {
    std::string line;
    for (const char letter : text) {
        const bool isBreak = letter == '\r' || letter == '\n' || letter == '\t';
        if (!isBreak) {
            line += letter;
        } else if (!line.empty() && line.back() != ' ') {
            line += ' ';
        }
    }
    if (line.size() <= longestEvent) return line;
    // Not within a letter of several bytes: those after its first begin with the bits 10.
    std::size_t end = longestEvent;
    while (end > 0 && (static_cast<unsigned char>(line[end]) & 0xC0) == 0x80) --end;
    return line.substr(0, end) + " ...";
}

const char* TextOf(Answer answer) {
    switch (answer) {
        case Answer::OK:
            return "OK";
        case Answer::Cancel:
            return "Cancel";
        case Answer::Yes:
            return "Yes";
        case Answer::No:
            return "No";
    }
    return "";
}

void WriteWaitingLines(Program& program) {
    std::string& lines = program.UnwrittenJournal;
    if (!program.Services.files.IsFolder(program.InterimFolder())) return;
    try {
        program.Services.files.AppendToFile(program.InterimFolder() / journalName, lines);
        lines.clear();
    } catch (const FileError& error) {
        program.Log(error.what());
    }
}

}  // namespace

void BeginJournal(Program& program, const std::string& event) {
    program.UnwrittenJournal.clear();
    AddToJournal(program, event);
}

void AddToJournal(Program& program, const std::string& event) {
    const CalibrationRun& run = program.Run;
    if (run.InterimFolderName.empty()) return;
    program.UnwrittenJournal += Format(program.Now(), "yyyy-mm-dd hh:nn:ss") + '\t' +
                                OnOneLine(program.Center.CalibrationCenterOperator) + '\t' +
                                NumberText(static_cast<int>(run.CurrentProcedure)) + ',' +
                                NumberText(run.CurrentProcStep) + '\t' + OnOneLine(event) + "\r\n";
    WriteWaitingLines(program);
}

void AddToJournal(Program& program, const MessageBox& message, Answer answer) {
    const std::string title = message.title.empty() ? "" : message.title + ": ";
    AddToJournal(program, "Message, answered " + std::string(TextOf(answer)) + ": " + title + message.text);
}

}  // namespace bellmark
