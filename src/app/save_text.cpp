#include "app/save_text.h"

#include <algorithm>
#include <utility>

#include "app/program.h"
#include "platform/dialogs.h"
#include "platform/file_text.h"

namespace bellmark {

namespace {

/// Lines that cannot be stored, with the program folder removed from the start of their values.
std::string FromProgramFolderOn(const Program& program, std::string_view text) {
    const std::string folder = PathText(program.Folder()) + static_cast<char>(Path::preferred_separator);
    std::string shortened;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size() - 1) + 1;
        std::string line(text.substr(0, end));
        const auto at = line.find(folder);
        if (at != std::string::npos && !WithoutUnstorable(line).isWhole) line.erase(at, folder.size());
        shortened += line;
        text.remove_prefix(end);
    }
    return shortened;
}

}  // namespace

void SaveText(Program& program, const Path& path, std::string_view text) {
    StorableText storable = WithoutUnstorable(text);
    if (!storable.isWhole) storable = WithoutUnstorable(FromProgramFolderOn(program, text));
    ReplaceTextFile(program.Services.files, path, std::move(storable.text));
    if (storable.isWhole || program.ToldOfLetters) return;
    program.ToldOfLetters = true;
    program.ShowBox(
        "A folder or file has a name with letters that the program's files cannot hold. The run goes on, and "
        "everything "
        "but that name is saved: after a restart the folder has to be chosen again.",
        box::information);
}

Path StoredPath(const Program& program, const Path& path) {
    const Path whole = program.Folder() / path;
    const bool wasShortened = !path.empty() && path.is_relative() && program.Services.files.IsFolder(whole);
    return wasShortened ? whole : path;
}

}  // namespace bellmark
