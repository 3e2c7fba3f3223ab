#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/dialogs.h"

namespace bellmark {

/// Ends a script from deep inside the program. Not a std::exception, so that the program does not handle it as its own
/// failure.
struct ScriptStop {
    std::string why;
};

/// Line breaks as \n, so that a text stays on one line.
std::string OnOneLine(const std::string& text);

/// Dialogs that answer from queues, first in, first out. Asking with an empty queue stops the script.
class ScriptDialogs : public Dialogs {
  public:
    void QueueAnswer(Answer answer) { answers_.push_back(answer); }
    void QueueFile(std::optional<Path> file) { files_.push_back(std::move(file)); }
    void QueueFolder(std::optional<Path> folder) { folders_.push_back(std::move(folder)); }
    void QueueInput(std::string text) { inputs_.push_back(std::move(text)); }

    /// One line for each box since the last call: title, text, style and answer, separated by tabs.
    std::vector<std::string> TakeBoxes() { return std::exchange(boxes_, {}); }

    std::function<void(const std::string& box)> Shown;  ///< called for every box as it appears

    Answer Show(const MessageBox& message) override;
    std::optional<std::string> Input(const std::string& prompt, const std::string& title, const std::string&) override;
    std::optional<Path> OpenFile(const FileChoice&) override;
    std::optional<Path> SaveFile(const FileChoice&) override;
    std::optional<Path> PickFolder(const std::string& prompt, const Path&) override;

  private:
    std::deque<Answer> answers_;
    std::deque<std::optional<Path>> files_;
    std::deque<std::optional<Path>> folders_;
    std::deque<std::string> inputs_;
    std::vector<std::string> boxes_;
};

std::string AnswerText(Answer answer);

}  // namespace bellmark
