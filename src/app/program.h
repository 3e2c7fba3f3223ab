#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <typeindex>
#include <vector>

#include "app/error_messages.h"
#include "app/page_header.h"
#include "controls/screen_stack.h"
#include "platform/machine.h"
#include "run/calibration_run.h"
#include "run/center_config.h"
#include "run/drop_record.h"

namespace bellmark {

class PDDXFile;
struct MessageBox;

/// One running program: its records, its services and its screens behind their doors. Passed by reference; there is
/// nothing global, so that two of them can live side by side.
class Program {
  public:
    explicit Program(Machine& machine);
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    Machine& Services;
    CalibrationRun Run;
    CenterConfig Center;
    DropRecord Drop;
    std::unique_ptr<PDDXFile> RunDocument;       ///< the FWD's and the calibration's part of the files
    std::unique_ptr<PDDXFile> CenterDocument;    ///< the center's file as it was read
    std::optional<CenterConfig> CenterSetAside;  ///< while a saved drop is replayed
    bool ToldOfLetters = false;                  ///< the operator knows that a name could not be stored
    std::string UnwrittenJournal;                ///< lines of before the run had a folder; see journal.h
    PageHeader Header;
    ScreenStack Screens;

    /// Registers the screen behind a door. The screen is made when the door is first asked for.
    template <class Door>
    void Register(std::function<std::shared_ptr<Door>(Program&)> make) {
        makers_[typeid(Door)] = [this, make = std::move(make)] { return std::shared_ptr<void>(make(*this)); };
    }
    template <class Door>
    bool Has() const {
        return makers_.count(typeid(Door)) > 0;
    }
    /// Throws std::logic_error when nothing was registered.
    template <class Door>
    Door& The() {
        return *static_cast<Door*>(Open(typeid(Door)).get());
    }

    /// Composes a numbered message, with its values, into the run.
    void Compose(int code, const std::vector<MessageValue>& values = {});
    /// Shows the message composed last in a box of its usual style, or of the given one.
    Answer ShowComposed();
    Answer ShowComposed(int style);
    Answer ShowBox(const std::string& text, int style, const std::string& title = {});

    DateTime Now() const;
    const Path& Folder() const { return Services.programFolder; }
    /// The run's data folder. Throws std::logic_error while the run has no name: its files must never end up in the
    /// program folder.
    Path InterimFolder() const;

    /// Folder of the drops that the simulated board serves.
    Path SimDataFolder() const { return Run.SimDataLocation.empty() ? Folder() : Run.SimDataLocation; }

    /// Appends a line to Bellmark.log in the program folder, where that can be written.
    void Log(const std::string& what);

  private:
    std::shared_ptr<void>& Open(std::type_index door);
    Answer Show(const MessageBox& message);
    void TellFailure(const std::string& what, const std::string& why);

    std::map<std::type_index, std::function<std::shared_ptr<void>()>> makers_;
    std::map<std::type_index, std::shared_ptr<void>> doors_;
};

}  // namespace bellmark
