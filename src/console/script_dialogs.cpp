#include "console/script_dialogs.h"

#include <utility>

#include "platform/numbers.h"

namespace bellmark {

namespace {

template <class Value>
Value TakeFirst(std::deque<Value>& queue, const std::string& asked) {
    if (queue.empty()) throw ScriptStop{asked};
    Value first = std::move(queue.front());
    queue.pop_front();
    return first;
}

bool CanAnswer(int style, Answer answer) {
    if (answer == Answer::Cancel) return box::HasCancel(style);
    return box::HasYesNo(style) == (answer == Answer::Yes || answer == Answer::No);
}

}  // namespace

std::string OnOneLine(const std::string& text) {
    std::string line;
    for (const char c : text) {
        if (c == '\n') {
            line += "\\n";
        } else if (c != '\r') {
            line += c;
        }
    }
    return line;
}

std::string AnswerText(Answer answer) {
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
    return {};
}

Answer ScriptDialogs::Show(const MessageBox& message) {
    const std::string described =
        OnOneLine(message.title) + '\t' + OnOneLine(message.text) + '\t' + NumberText(message.style);
    const Answer answer = TakeFirst(answers_, "a message box came up and no answer is queued: " + described);
    if (!CanAnswer(message.style, answer)) {
        throw ScriptStop{"the message box has no button " + AnswerText(answer) + ": " + described};
    }
    boxes_.push_back(described + '\t' + AnswerText(answer));
    if (Shown) Shown(boxes_.back());
    return answer;
}

std::optional<std::string> ScriptDialogs::Input(const std::string& prompt, const std::string& title,
                                                const std::string&) {
    return TakeFirst(inputs_, "an input box came up and no input is queued: " + title + ' ' + OnOneLine(prompt));
}

std::optional<Path> ScriptDialogs::OpenFile(const FileChoice& choice) {
    return TakeFirst(files_, "a file dialog came up and no file is queued: " + choice.filter);
}

std::optional<Path> ScriptDialogs::SaveFile(const FileChoice& choice) {
    return TakeFirst(files_, "a file dialog came up and no file is queued: " + choice.filter);
}

std::optional<Path> ScriptDialogs::PickFolder(const std::string& prompt, const Path&) {
    return TakeFirst(folders_, "a folder dialog came up and no folder is queued: " + OnOneLine(prompt));
}

}  // namespace bellmark
