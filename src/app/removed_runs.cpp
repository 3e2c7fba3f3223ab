#include "app/removed_runs.h"

#include <functional>

#include "app/program.h"
#include "platform/format.h"
#include "platform/numbers.h"
#include "run/paths.h"

namespace bellmark {

namespace {

constexpr std::chrono::days keptFor{90};
constexpr const char* stampPicture = "yyyymmdd-hhnnss";
constexpr std::size_t stampLength = 15;

Path RemovedFolder(const Program& program) {
    return program.Folder() / removedFolderName;
}

/// A failure is logged and otherwise ignored: what is left does no harm.
void TryOrLog(Program& program, const std::function<void()>& action) {
    try {
        action();
    } catch (const FileError& error) {
        program.Log(error.what());
    }
}

Path FreeFolder(const Program& program, const std::string& name) {
    const std::string wanted = Format(program.Now(), stampPicture) + '-' + name;
    std::string free = wanted;
    for (int n = 1; program.Services.files.IsFolder(RemovedFolder(program) / PathFromText(free)); ++n) {
        free = wanted + '-' + NumberText(n);
    }
    return RemovedFolder(program) / PathFromText(free);
}

/// Moment of "20120309-140509-..."; nothing for a name that does not begin so.
std::optional<DateTime> MomentInName(const std::string& name) {
    if (name.size() <= stampLength || name[stampLength] != '-') return {};
    const auto part = [&](std::size_t first, std::size_t length) { return name.substr(first, length); };
    const auto moment = ReadDateTime(part(0, 4) + '-' + part(4, 2) + '-' + part(6, 2) + ' ' + part(9, 2) + ':' +
                                     part(11, 2) + ':' + part(13, 2));
    if (!moment || Format(*moment, stampPicture) != part(0, stampLength)) return {};
    return moment;
}

}  // namespace

void MoveToRemoved(Program& program, const std::string& name, const std::vector<Path>& things) {
    FileSystem& files = program.Services.files;
    const Path folder = FreeFolder(program, name);
    for (const Path& thing : things) {
        const Path actual = ActualPath(files, thing);
        if (!files.IsFile(actual) && !files.IsFolder(actual)) continue;
        TryOrLog(program, [&] {
            files.CreateFolder(folder);
            files.Rename(actual, folder / actual.filename());
        });
    }
}

void PurgeRemoved(Program& program) {
    FileSystem& files = program.Services.files;
    for (const auto& name : files.FolderNames(RemovedFolder(program))) {
        const auto removed = MomentInName(name);
        if (!removed || program.Now() - *removed <= keptFor) continue;
        TryOrLog(program, [&] { files.RemoveFolder(RemovedFolder(program) / PathFromText(name)); });
    }
}

}  // namespace bellmark
