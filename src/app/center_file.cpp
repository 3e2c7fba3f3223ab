#include "app/center_file.h"

#include "app/change_trials.h"
#include "app/program.h"
#include "app/save_text.h"
#include "pddx/mod_pddx_read.h"
#include "pddx/pddx_file.h"
#include "platform/date_time.h"
#include "platform/dialogs.h"
#include "platform/profile_strings.h"
#include "run/center_keys.h"
#include "run/paths.h"
#include "run/run_document.h"
#include "run/stored_values.h"

namespace bellmark {

namespace {

/// The major number of the version that wrote a file: the two characters from the first blank of "Version 2.1.0".
int VersionIn(const std::string& text) {
    const auto blank = text.find(' ');
    return blank == std::string::npos ? 0 : StoredWhole(std::string_view(text).substr(blank, 2), 0, 9);
}

/// A file that exists but cannot be read must not be taken for an empty one: the change would lose its contents.
/// change: called with the file's strings and its path.
template <class Change>
void ChangeFile(Program& program, const Path& path, Change change) {
    FileSystem& files = program.Services.files;
    const Path file = ActualPath(files, path);
    ProfileStrings strings = files.IsFile(file) ? ProfileStrings(ReadTextFile(files, file)) : ProfileStrings();
    change(strings, file);
    // The data folder of a run is created with the first file written into it.
    files.CreateFolder(file.parent_path());
    SaveText(program, file, strings.Text());
}

/// Takes what belongs to the run from the files that the FWD's operator brings.
void ReadTransferFolder(Program& program) {
    const FileSystem& files = program.Services.files;
    CalibrationRun& run = program.Run;
    const Path folder = PathFromText(program.Center.LocationOfFWDDataTransfer);
    run.TransferFileVersion2 = false;
    if (folder.empty()) return;
    const auto interim = OpenProfileStrings(files, ActualPath(files, folder / interimCopyName));
    run.TransferFileVersion2 = VersionIn(interim.Get(centerSection, "VersionNumber")) > 1;
    if (!run.ReviewFromInterim) return;
    ReadSequenceKeys(OpenProfileStrings(files, ActualPath(files, folder / "BellmarkCalibration.ddx")), run);
}

Path KeptConfiguration(const Program& program) {
    return ActualPath(program.Services.files, program.Folder() / oldCenterConfigName);
}

/// A date that cannot be read would be written back as the zero date at the next save.
std::string DateFault(const ProfileStrings& strings) {
    for (const char* key : {"ReferenceLoadCellCalibrationDate", "AccelReferenceCalibrationDate",
                            "AccelDailyCalibrationDate", "AccelDailyCalibrationTime"}) {
        const std::string text = strings.Get(centerSection, key);
        if (text.empty() || ReadDateTime(text)) continue;
        return std::string(key) + " is \"" + text +
               "\". Dates are written 09-Mar-2012, or with the month first and a year of four digits, 03-09-2012.";
    }
    return {};
}

/// Takes the strings of a file. Returns why it is not a center's configuration, in words for the operator; empty when
/// it is one.
std::string CenterFileFault(const FileSystem& files, const Path& path, ProfileStrings& strings) {
    try {
        strings = ProfileStrings(ReadTextFile(files, path));
        return strings.HasSection(centerSection) ? DateFault(strings)
                                                 : "It does not hold the configuration of a calibration center.";
    } catch (const FileError& error) {
        return error.what();
    }
}

}  // namespace

void WriteCenterDataToPDDX(Program& program, const Path& path) {
    ChangeFile(program, path, [&](ProfileStrings& strings, const Path& file) {
        SetCenterKeys(strings, program.Center, program.Run.EnglishUnits, file, program.Now());
    });
}

void WriteFlipData(Program& program, const Path& path) {
    ChangeFile(program, path,
               [&](ProfileStrings& strings, const Path&) { SetDailyCalibrationKeys(strings, program.Center); });
}

void WriteKey(Program& program, const Path& path, std::string_view section, std::string_view key,
              std::string_view value) {
    ChangeFile(program, path, [&](ProfileStrings& strings, const Path&) { strings.Set(section, key, value); });
}

Path MasterCenterConfig(const Program& program) {
    return ActualPath(program.Services.files, program.Folder() / centerConfigName);
}

Path RunCenterConfig(const Program& program) {
    if (program.Run.InterimFolderName.empty()) return MasterCenterConfig(program);
    return ActualPath(program.Services.files, program.InterimFolder() / centerConfigName);
}

bool ReadCenterConfiguration(Program& program, const Path& path) {
    ProfileStrings read;
    const std::string problem = CenterFileFault(program.Services.files, path, read);
    if (!problem.empty()) {
        program.Log("The center configuration could not be taken: " + PathText(path) + ": " + problem);
        program.ShowBox(
            "The configuration of the calibration center could not be read:\r\n" + PathText(path) + "\r\n" + problem,
            box::exclamation);
        return false;
    }
    CenterConfig& center = program.Center;
    CalibrationRun& run = program.Run;
    ReadPDDX(read, *program.CenterDocument, false);
    ReadCenterKeys(*program.CenterDocument, center);
    const Path transfer = StoredPath(program, PathFromText(center.LocationOfFWDDataTransfer));
    center.LocationOfFWDDataTransfer = PathText(transfer);
    center.IsKnown = true;
    const Path runCopy = RunCenterConfig(program);
    if (center.FileName.empty()) center.FileName = PathText(runCopy);
    const std::string& units = program.CenterDocument->Sections(centerSection).Elements("EnglishUnits").Value();
    const bool english = units.empty() || StoredBoolean(units);
    if (MayChangeTrials(program, {run.NumberLoadLevels, run.NumberDropsPerLoadLevel, english})) {
        run.EnglishUnits = english;
    }
    if (run.ReviewFromInterim) {
        center.AccelDailyCalibrationDate = program.Now();
        center.AccelDailyCalibrationTime = program.Now();
    }
    ReadTransferFolder(program);
    ProfileStrings strings;
    SetCenterKeys(strings, center, run.EnglishUnits, runCopy, program.Now());
    program.Services.files.CreateFolder(runCopy.parent_path());
    SaveText(program, runCopy, strings.Text());
    return true;
}

void KeepCenterConfiguration(Program& program) {
    FileSystem& files = program.Services.files;
    const Path master = MasterCenterConfig(program);
    // The first one kept is the machine's own; the one that a review puts in its place is not.
    if (files.IsFile(KeptConfiguration(program)) || !files.IsFile(master)) return;
    // If it cannot be read now, the review does not begin, so that it is not lost.
    if (!ProfileStrings(ReadTextFile(files, master)).HasSection(centerSection)) return;
    files.CopyFile(master, program.Folder() / oldCenterConfigName);
}

void PutBackCenterConfiguration(Program& program) {
    FileSystem& files = program.Services.files;
    const Path kept = KeptConfiguration(program);
    if (!files.IsFile(kept)) return;
    try {
        if (!ProfileStrings(ReadTextFile(files, kept)).HasSection(centerSection)) return files.RemoveFile(kept);
        // Renaming replaces the file in one step: there is a configuration at every moment.
        files.Rename(kept, MasterCenterConfig(program));
    } catch (const FileError& error) {
        program.Log(error.what());
        program.ShowBox(std::string("The center's own configuration could not be put back.\r\n") + error.what(),
                        box::exclamation, "Bellmark");
    }
}

void ForgetKeptConfiguration(Program& program) {
    program.Services.files.RemoveFile(KeptConfiguration(program));
}

}  // namespace bellmark
