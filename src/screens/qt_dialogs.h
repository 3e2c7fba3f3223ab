#pragma once

#include <QStringList>
#include <functional>

#include "platform/dialogs.h"

class QMessageBox;
class QFileDialog;
class QWidget;

namespace bellmark {

class Preferences;

/// Boxes and file dialogs on the screen.
class QtDialogs : public Dialogs {
  public:
    /// preferences: remembers folders and file types, and must outlive the dialogs; null to remember nothing.
    /// warns: called when a box comes up that tells of something wrong.
    explicit QtDialogs(
        std::function<void(int context)> showHelp, Preferences* preferences = nullptr,
        std::function<void()> warns = [] {})
        : showHelp_(std::move(showHelp)), preferences_(preferences), warns_(std::move(warns)) {}

    /// The window that the boxes belong to.
    void SetParent(QWidget* parent) { parent_ = parent; }

    Answer Show(const MessageBox& message) override;
    std::optional<std::string> Input(const std::string& prompt, const std::string& title,
                                     const std::string& defaultText) override;
    std::optional<Path> OpenFile(const FileChoice& choice) override;

    /// Does what asks for a file. The file is given already, so that nothing is asked.
    void Give(const Path& file, const std::function<void()>& action);
    std::optional<Path> SaveFile(const FileChoice& choice) override;
    std::optional<Path> PickFolder(const std::string& prompt, const Path& start) override;

  private:
    std::optional<Path> Ask(QFileDialog& dialog, const FileChoice& choice);

    std::function<void(int context)> showHelp_;
    Preferences* preferences_;
    std::function<void()> warns_;
    std::optional<Path> given_;  ///< answers the next question for a file
    QWidget* parent_ = nullptr;
};

/// "What it is|*.ini;*.ddx|Other|*.*" for the file dialog, one entry per pair. Patterns ignore case. Where the FWD's
/// own files and PDDX files can be chosen, an entry for both comes first.
QStringList FileDialogFilters(const std::string& filter);

}  // namespace bellmark
