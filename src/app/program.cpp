#include "app/program.h"

#include <stdexcept>

#include "app/journal.h"
#include "pddx/pddx_file.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/format.h"
#include "platform/text.h"

namespace bellmark {

Program::Program(Machine& machine)
    : Services(machine),
      RunDocument(std::make_unique<PDDXFile>()),
      CenterDocument(std::make_unique<PDDXFile>()),
      Screens(machine.timers) {
    Screens.HandleFailure = [this](const std::string& what, const std::string& why) { TellFailure(what, why); };
}

Program::~Program() = default;

Path Program::InterimFolder() const {
    if (Run.InterimFolderName.empty()) throw std::logic_error("No calibration has been begun.");
    return Folder() / PathFromText(Run.InterimFolderName);
}

std::shared_ptr<void>& Program::Open(std::type_index door) {
    auto& opened = doors_[door];
    if (!opened) {
        const auto maker = makers_.find(door);
        if (maker == makers_.end()) throw std::logic_error("This screen is not part of the program.");
        opened = maker->second();
    }
    return opened;
}

void Program::Compose(int code, const std::vector<MessageValue>& values) {
    ErrorMessages(Run, code, values, {Folder(), Now(), Center.ReferenceLoadCellUnits});
}

/// The journal tells which messages the operator saw, and what he answered.
Answer Program::Show(const MessageBox& message) {
    const Answer answer = Services.dialogs.Show(message);
    AddToJournal(*this, message, answer);
    return answer;
}

Answer Program::ShowComposed() {
    return Show(ComposedBox(Run));
}

Answer Program::ShowComposed(int style) {
    return Show(ComposedBox(Run, style));
}

Answer Program::ShowBox(const std::string& text, int style, const std::string& title) {
    return Show({text, style, title, 0});
}

DateTime Program::Now() const {
    return Services.clock.Now();
}

void Program::Log(const std::string& what) {
    const std::string line = Format(Now(), "yyyy-mm-dd hh:nn:ss") + ' ' + what + "\r\n";
    try {
        Services.files.AppendToFile(Folder() / "Bellmark.log", line);
    } catch (const FileError&) {
        // The log may fail because the disk is full; the message to the operator must still appear.
    }
}

void Program::TellFailure(const std::string& what, const std::string& why) {
    Log(what + ": " + why);
    ShowBox(why + "\r\n\r\nWhile: " + what, box::critical, "Bellmark");
}

}  // namespace bellmark
