#include "app/save_text.h"

#include "app/program.h"
#include "platform/dialogs.h"
#include "platform/file_text.h"

namespace bellmark {

namespace {

/// Values that begin with the program folder, without it.
std::string FromProgramFolderOn(const Program& program, std::string_view text) {
    const std::string folder = PathText(program.Folder()) + static_cast<char>(Path::preferred_separator);
    std::string shortened;
    for (std::size_t at = text.find(folder); at != std::string_view::npos; at = text.find(folder)) {
        shortened += text.substr(0, at);
        text.remove_prefix(at + folder.size());
    }
    return shortened += text;
}

}  // namespace

void SaveText(Program& program, const Path& path, std::string_view text) {
    StorableText storable = WithoutUnstorable(text);
    if (!storable.isWhole) storable = WithoutUnstorable(FromProgramFolderOn(program, text));
    ReplaceTextFile(program.Services.files, path, storable.text);
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
