#include "app/start_cleaning.h"

#include <algorithm>

#include "app/program.h"
#include "app/removed_runs.h"
#include "platform/text.h"
#include "run/paths.h"

namespace bellmark {

namespace {

/// A run that was started and never saved holds only its copies of the center's configuration.
bool WasNeverSaved(const FileSystem& files, const Path& programFolder, const std::string& name) {
    const Path folder = programFolder / PathFromText(name);
    const auto names = files.FileNames(folder);
    const auto isConfiguration = [](const std::string& file) {
        return EqualIgnoringCase(file, centerConfigName) || EqualIgnoringCase(file, oldCenterConfigName);
    };
    return !FileExists(files, programFolder / PathFromText(name + ".DDX")) && files.FolderNames(folder).empty() &&
           std::all_of(names.begin(), names.end(), isConfiguration);
}

}  // namespace

void CleanUpAtStart(Program& program) {
    FileSystem& files = program.Services.files;
    files.RemoveTemporaryFiles(program.Folder());
    PurgeRemoved(program);
    for (const auto& name : ListSubFolders(files, program.Folder(), "InterimCal")) {
        const Path folder = program.Folder() / PathFromText(name);
        files.RemoveTemporaryFiles(folder);
        if (!WasNeverSaved(files, program.Folder(), name)) continue;
        try {
            files.RemoveFolder(folder);
        } catch (const FileError& error) {
            // Left for the next start: it does no harm.
            program.Log(error.what());
        }
    }
}

}  // namespace bellmark
