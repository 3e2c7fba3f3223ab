#pragma once

#include <QStringList>
#include <functional>

#include "platform/dialogs.h"

class QMessageBox;
class QWidget;

namespace bellmark {

/// Boxes and file dialogs on the screen.
class QtDialogs : public Dialogs {
  public:
    explicit QtDialogs(std::function<void(int context)> showHelp) : showHelp_(std::move(showHelp)) {}

    /// The window that the boxes belong to.
    void SetParent(QWidget* parent) { parent_ = parent; }

    Answer Show(const MessageBox& message) override;
    std::optional<std::string> Input(const std::string& prompt, const std::string& title,
                                     const std::string& defaultText) override;
    std::optional<Path> OpenFile(const FileChoice& choice) override;
    std::optional<Path> SaveFile(const FileChoice& choice) override;
    std::optional<Path> PickFolder(const std::string& prompt, const Path& start) override;

  private:
    std::function<void(int context)> showHelp_;
    QWidget* parent_ = nullptr;
};

/// "What it is|*.ini;*.ddx|Other|*.*" for the file dialog, one entry per pair. Patterns ignore case.
QStringList FileDialogFilters(const std::string& filter);

}  // namespace bellmark
