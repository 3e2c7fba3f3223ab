#include "results/publish_run.h"

#include <limits>
#include <stdexcept>

#include "app/doors.h"
#include "app/interim_store.h"
#include "app/journal.h"
#include "app/program.h"
#include "app/save_pddx.h"
#include "pddx/pddx_file.h"
#include "platform/date_time.h"
#include "platform/format.h"
#include "platform/profile_strings.h"
#include "platform/text.h"
#include "results/fwd_history.h"
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

/// "20120309" or "Sim20120309".
bool IsDatedName(std::string_view name) {
    constexpr std::string_view review = "Sim";
    if (StartsWith(name, review)) name.remove_prefix(review.size());
    constexpr std::size_t digits = 8;
    if (name.size() != digits || name.find_first_not_of("0123456789") != std::string_view::npos) return false;
    const std::string day(name);
    return ReadDateTime(day.substr(0, 4) + '-' + day.substr(4, 2) + '-' + day.substr(6)).has_value();
}

/// A path read from a run's file may lead anywhere. The program may delete only a dated folder of this FWD in the tree
/// of the calibrations.
bool IsDatedFolder(const Program& program, const Path& folder) {
    const Path& device = program.Run.DeviceFolder;
    const bool isDirect = folder == folder.lexically_normal();
    return isDirect && folder.parent_path() == device &&
           device.parent_path().parent_path() == CalibrationsFolder(program.Folder()) &&
           IsDatedName(PathText(folder.filename()));
}

/// Skips files that are already there, because each acceptance has copied most of them.
void CopyWhenOther(FileSystem& files, const Path& from, const Path& to, const TakeCopied& take) {
    constexpr auto anySize = std::numeric_limits<std::uintmax_t>::max();
    const std::string bytes = files.ReadBytes(from, anySize);
    const bool isThere = files.IsFile(to) && files.ReadBytes(to, anySize) == bytes;
    if (!isThere) files.ReplaceFile(to, bytes);
    if (take) take(to, bytes);
}

void CopyFolder(FileSystem& files, const Path& from, const Path& to, const TakeCopied& take) {
    files.CreateFolder(to);
    for (const auto& name : files.FileNames(from)) {
        // The journal goes on: a repeated publication must give the same files.
        if (name == journalName) continue;
        CopyWhenOther(files, from / PathFromText(name), ActualPath(files, to / PathFromText(name)), take);
    }
    for (const auto& name : files.FolderNames(from)) {
        CopyFolder(files, from / PathFromText(name), to / PathFromText(name), take);
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
    // Leftovers of a publication that was interrupted.
    files.RemoveTemporaryFiles(folder);
    const Path old = std::exchange(run.OutputFolder, folder);
    if (old != folder && IsDatedFolder(program, old)) files.RemoveFolder(old);
}

bool WriteRunDocument(Program& program, const Path& path) {
    PDDXFile& document = *program.RunDocument;
    document.Sections("Operations Information").Elements("FileName").SetValue(PathText(path));
    return SavePDDX(program, document, path);
}

bool WriteDocumentForFWD(Program& program, const Path& path) {
    PDDXFile& document = *program.RunDocument;
    document.Sections("Operations Information").Elements("FileName").SetValue(PathText(path));
    return SavePDDX(program, document, path, [&](std::string& text) {
        if (!program.Services.files.IsFile(path)) return;
        const ProfileStrings former(ReadTextFile(program.Services.files, path));
        const std::string serial = former.Get("Device Information", "DeviceSerialNumber");
        const bool isOther = !serial.empty() && serial != Trim(program.Run.DeviceSerialNumber);
        if (!isOther) text = WithHistory(text, former);
    });
}

void CopyTrialData(Program& program, const TakeCopied& take) {
    const Path data = program.InterimFolder();
    if (!program.Services.files.IsFolder(data)) throw FileError(data, "the run's data folder is missing");
    CopyFolder(program.Services.files, data, program.Run.OutputFolder, take);
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
