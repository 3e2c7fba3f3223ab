#include "results/publish_run.h"

#include <stdexcept>

#include "app/doors.h"
#include "app/interim_store.h"
#include "app/program.h"
#include "app/save_pddx.h"
#include "pddx/pddx_file.h"
#include "platform/format.h"
#include "run/paths.h"

namespace bellmark {

namespace {

Path DatedFolder(const Program& program) {
    const CalibrationRun& run = program.Run;
    if (run.DeviceFolder.empty()) {
        throw std::runtime_error("The results have no place yet: choose the folder of the FWD in the set-up.");
    }
    return run.DeviceFolder / ((run.ReviewMode ? "Sim" : "") + Format(program.Now(), "yyyymmdd"));
}

void CopyFolder(FileSystem& files, const Path& from, const Path& to) {
    files.CreateFolder(to);
    for (const auto& name : files.FileNames(from)) {
        files.CopyFile(from / PathFromText(name), ActualPath(files, to / PathFromText(name)));
    }
    for (const auto& name : files.FolderNames(from)) {
        CopyFolder(files, from / PathFromText(name), to / PathFromText(name));
    }
}

}  // namespace

std::string TodayText(const Program& program) {
    return Format(program.Now(), "dd-mmm-yyyy");
}

void OpenOutputFolder(Program& program) {
    FileSystem& files = program.Services.files;
    CalibrationRun& run = program.Run;
    const Path folder = DatedFolder(program);
    files.CreateFolder(folder);
    const Path old = std::exchange(run.OutputFolder, folder);
    // A path that a file of the run brought may lead anywhere: only what stands beside the new one is the run's.
    const bool isEarlierOne = old != folder && old.parent_path() == run.DeviceFolder && files.IsFolder(old);
    if (isEarlierOne) files.RemoveFolder(old);
}

bool WriteRunDocument(Program& program, const Path& path) {
    PDDXFile& document = *program.RunDocument;
    document.Sections("Operations Information").Elements("FileName").SetValue(PathText(path));
    return SavePDDX(program, document, path);
}

void CopyTrialData(Program& program) {
    const Path data = program.InterimFolder();
    if (!program.Services.files.IsFolder(data)) throw FileError(data, "the run's data folder is missing");
    CopyFolder(program.Services.files, data, program.Run.OutputFolder);
}

void PublishRun(Program& program) {
    try {
        OpenOutputFolder(program);
    } catch (const std::exception&) {
        SaveInterimCalibration(program);
        throw;
    }
    SaveInterimCalibration(program);
    WriteRunDocument(program, program.Run.OutputFolder / calibrationDocumentName);
    CopyTrialData(program);
}

}  // namespace bellmark
