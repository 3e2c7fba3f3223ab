#pragma once

#include <optional>
#include <string>

#include "platform/files.h"

namespace bellmark {

/// Answer codes of a message box.
enum class Answer { OK = 1, Cancel = 2, Yes = 6, No = 7 };

/// Sums of these make the style of a message box.
namespace box {
inline constexpr int okCancel = 1;
inline constexpr int yesNoCancel = 3;
inline constexpr int yesNo = 4;
inline constexpr int critical = 16;
inline constexpr int question = 32;
inline constexpr int exclamation = 48;
inline constexpr int information = 64;
inline constexpr int secondIsDefault = 256;
inline constexpr int helpButton = 16384;

constexpr bool HasYesNo(int style) {
    return (style & 7) == yesNo || (style & 7) == yesNoCancel;
}
constexpr bool HasCancel(int style) {
    return (style & 7) == okCancel || (style & 7) == yesNoCancel;
}
constexpr int Icon(int style) {
    return style & 112;
}
}  // namespace box

struct MessageBox {
    std::string text;
    int style = 0;
    std::string title;
    int helpContext = 0;  ///< page of the help that the help button opens; 0 for none
};

struct FileChoice {
    std::string title;
    std::string filter;  ///< "What it is|*.ini", more pairs follow after further bars
    Path folder;         ///< where the dialog starts
    std::string fileName;
};

/// Everything that asks the operator something and waits for the answer.
class Dialogs {
  public:
    virtual ~Dialogs() = default;
    virtual Answer Show(const MessageBox& message) = 0;
    virtual std::optional<std::string> Input(const std::string& prompt, const std::string& title,
                                             const std::string& defaultText) = 0;
    virtual std::optional<Path> OpenFile(const FileChoice& choice) = 0;
    virtual std::optional<Path> SaveFile(const FileChoice& choice) = 0;
    virtual std::optional<Path> PickFolder(const std::string& prompt, const Path& start) = 0;
};

/// The folder that the operator picks, or an empty path.
inline Path BrowseForFolder(Dialogs& dialogs, const std::string& prompt) {
    return dialogs.PickFolder(prompt, {}).value_or(Path());
}

}  // namespace bellmark
