#include "app/interim_store.h"

#include <algorithm>
#include <utility>

#include "app/app_main.h"
#include "app/center_file.h"
#include "app/doors.h"
#include "app/fwd_configuration.h"
#include "app/journal.h"
#include "app/program.h"
#include "app/removed_runs.h"
#include "app/save_text.h"
#include "app/workflow.h"
#include "pddx/pddx_file.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/numbers.h"
#include "platform/profile_strings.h"
#include "platform/text.h"
#include "run/center_keys.h"
#include "run/interim_keys.h"
#include "run/paths.h"
#include "run/run_document.h"
#include "run/stored_values.h"

namespace bellmark {

namespace {

constexpr std::size_t extensionLength = 4;
constexpr const char* extension = ".DDX";
constexpr const char* prefix = "InterimCal";

/// The notes as a comma list, without the empty ones at the end.
std::string CommentOf(const CenterConfig& center) {
    std::string comment, commas;
    for (const std::string& note : center.Notes) {
        if (!note.empty()) {
            comment += commas + note;
            commas.clear();
        }
        commas += ',';
    }
    return comment;
}

void TakeComment(const std::string& comment, CenterConfig& center) {
    for (std::size_t i = 0; i < center.Notes.size(); ++i) {
        center.Notes[i] = GetListField(static_cast<int>(i) + 1, comment);
    }
}

/// The text of the file: the document, the center's keys and the run's keys, written one after the other.
std::string InterimText(Program& program, const Path& file) {
    PDDXFile& document = *program.RunDocument;
    SaveBellmarkDDX(document, program.Run, program.Center, file, program.Now(), DocumentGains::Initial);
    std::string text;
    document.PDDX_Output(text);
    ProfileStrings strings(text);
    SetCenterKeys(strings, program.Center, program.Run.EnglishUnits, file, program.Now());
    SetRunKeys(strings, program.Run, CommentOf(program.Center), program.Now());
    SetStateKeys(strings, program.Run, program.Center);
    return strings.Text();
}

/// False, after a box, when it cannot be written.
bool WriteOrTell(Program& program, const Path& path, const std::string& text) {
    FileSystem& files = program.Services.files;
    try {
        files.CreateFolder(path.parent_path());
        SaveText(program, path, text);
        return true;
    } catch (const std::exception& error) {
        program.Log(error.what());
        program.ShowBox("Unable to create PDDX file:\r\n" + PathText(path), box::exclamation);
        return false;
    }
}

/// The strings of a file; those of an empty file when it cannot be read.
ProfileStrings StringsOf(const FileSystem& files, const Path& path) {
    return OpenProfileStrings(files, ActualPath(files, path));
}

std::string EndDateOf(const ProfileStrings& strings) {
    return strings.Get("Operations Information", "EndDate");
}

/// The file was written completely. A file from before the end mark existed is judged by its last keys.
bool IsWhole(const ProfileStrings& strings) {
    const bool hasLastKeys =
        !EndDateOf(strings).empty() && !strings.Get("Device Calibration", "CurrentProcedure").empty();
    return hasLastKeys || HasEndMark(strings);
}

int TrialsIn(const ProfileStrings& strings) {
    int trials = 0;
    for (const char* key : {"LoadCellRefTrials", "RefTrials", "RelTrials"}) {
        trials += StoredWhole(strings.Get("Device Calibration", key), 0, static_cast<int>(maxTrials));
    }
    return trials;
}

std::string TrialsText(const ProfileStrings& strings) {
    constexpr std::pair<const char*, const char*> kinds[] = {
        {"LoadCellRefTrials", " load cell"}, {"RefTrials", " reference"}, {"RelTrials", " relative"}};
    std::string text;
    for (const auto& [key, kind] : kinds) {
        const int count = StoredWhole(strings.Get("Device Calibration", key), 0, static_cast<int>(maxTrials));
        if (count > 0) text += (text.empty() ? "" : ", ") + NumberText(count) + kind;
    }
    return text.empty() ? "none" : text;
}

std::string LastChange(const ProfileStrings& strings) {
    const std::string time = strings.Get("Operations Information", "EndTime");
    return time.empty() ? EndDateOf(strings) : EndDateOf(strings) + ' ' + time;
}

/// Whether the copy is whole and holds more than its damaged file.
bool IsBetter(const ProfileStrings& copy, const ProfileStrings& file) {
    if (HasEndMark(file) || !IsWhole(copy)) return false;
    return HasEndMark(copy) || EndDateOf(file).empty() || TrialsIn(copy) > TrialsIn(file);
}

Path CopyOf(const Path& programFolder, const std::string& fileName) {
    return programFolder / PathFromText(InterimFolderOf(fileName)) / interimCopyName;
}

void ReadCenterForReview(Program& program) {
    // The machine's own configuration is not the one that the run was made with.
    const Path runCopy = RunCenterConfig(program);
    const bool hasCopy = program.Services.files.IsFile(runCopy);
    try {
        if (ReadCenterConfiguration(program, hasCopy ? runCopy : MasterCenterConfig(program))) {
            program.The<SetupDoor>().ShowCenter();
        }
    } catch (const std::exception& error) {
        // The copy is rewritten after reading. A failure is no error: a run can be viewed on a read-only disk.
        program.Log(error.what());
    }
}

}  // namespace

std::string InterimFolderOf(const std::string& fileName) {
    return fileName.substr(0, fileName.size() - std::min(fileName.size(), extensionLength));
}

bool SaveInterimCalibration(Program& program) {
    CalibrationRun& run = program.Run;
    if (run.InterimFileName.empty()) return true;
    run.InterimCalOpen = true;
    const Path file = program.Folder() / PathFromText(run.InterimFileName);
    const std::string text = InterimText(program, file);
    return WriteOrTell(program, file, text) && WriteOrTell(program, program.InterimFolder() / interimCopyName, text);
}

bool LoadInterimCalibration(Program& program) {
    const Path file = ActualPath(program.Services.files, program.Folder() / PathFromText(program.Run.InterimFileName));
    ProfileStrings strings;
    bool readable = true;
    try {
        strings = ProfileStrings(ReadTextFile(program.Services.files, file));
    } catch (const FileError& error) {
        program.Log(error.what());
        program.ShowBox("The interim calibration cannot be read.\r\n" + std::string(error.what()), box::exclamation);
        readable = false;
    }
    const bool reviewFromInterim = program.Run.ReviewFromInterim;
    BeginFreshRun(program);
    CalibrationRun& run = program.Run;
    run.StoreIsOfThisSitting = readable;
    run.NewCalibration = false;
    run.ProgramStarted = false;
    run.InterimCalOpen = true;
    run.ReviewFromInterim = reviewFromInterim;
    if (!readable) return false;
    if (reviewFromInterim) ReadCenterForReview(program);
    auto& setup = program.The<SetupDoor>();
    ReadFWDConfiguration(program, strings, FWDReading::Resumed);
    ReadRunKeys(strings, run);
    ResumeUnacceptedTrial(run);
    TakeComment(ReadCommentKey(strings), program.Center);
    // A run that goes on uses the accelerometer's calibration of the day, which may be newer than the file.
    if (reviewFromInterim) ReadDailyDeviations(strings, program.Center);
    for (Path* folder : {&run.OwnerFolder, &run.DeviceFolder, &run.OutputFolder}) {
        *folder = StoredPath(program, *folder);
    }
    const Path transfer = PathFromText(strings.Get(centerSection, "LocationOfFWDDataTransfer"));
    program.Center.LocationOfFWDDataTransfer = PathText(StoredPath(program, transfer));
    // A run left in the middle of its set-up goes on there, and nothing of it counts as approved.
    const bool setupIsUnderWay = run.CurrentProcedure == Procedure::Setup && run.CurrentProcStep >= step::setupCenter;
    run.SetupComplete = !setupIsUnderWay;
    run.ProgramStarted = setupIsUnderWay;
    BeginJournal(program, "The calibration is resumed");
    setup.RefreshFromRun();
    setup.AllowCalibration();
    return true;
}

InterimCalibration ReadInterim(const FileSystem& files, const Path& programFolder, const std::string& fileName) {
    ProfileStrings strings = StringsOf(files, programFolder / PathFromText(fileName));
    const std::string fileEndDate = EndDateOf(strings);
    ProfileStrings copy = StringsOf(files, CopyOf(programFolder, fileName));
    const bool fromCopy = IsBetter(copy, strings);
    if (fromCopy) strings = std::move(copy);
    return {fileName,
            EndDateOf(strings),
            strings.Get("Device Information", "DeviceOwner"),
            strings.Get("Device Information", "DeviceSerialNumber"),
            fromCopy,
            fileEndDate,
            TrialsText(strings),
            LastChange(strings)};
}

std::vector<InterimCalibration> InterimCalibrations(const FileSystem& files, const Path& programFolder) {
    std::vector<std::string> names = ListFilesWithPrefix(files, programFolder, prefix);
    for (const std::string& folder : ListSubFolders(files, programFolder, prefix)) {
        const std::string name = folder + extension;
        const bool isListed = std::any_of(names.begin(), names.end(),
                                          [&](const std::string& other) { return EqualIgnoringCase(name, other); });
        if (!isListed && IsWhole(StringsOf(files, programFolder / PathFromText(folder) / interimCopyName))) {
            names.push_back(name);
        }
    }
    std::vector<InterimCalibration> calibrations;
    for (const std::string& name : names) calibrations.push_back(ReadInterim(files, programFolder, name));
    return calibrations;
}

void RemoveInterimCalibration(Program& program) {
    const CalibrationRun& run = program.Run;
    // Without a name, the data folder would be the program's own folder.
    if (run.InterimFolderName.empty()) return;
    MoveToRemoved(program, run.InterimFolderName,
                  {program.Folder() / PathFromText(run.InterimFileName), program.InterimFolder()});
}

void RestoreInterimFromCopy(FileSystem& files, const Path& programFolder, const std::string& fileName) {
    const std::string bytes = files.ReadBytes(ActualPath(files, CopyOf(programFolder, fileName)));
    files.ReplaceFile(ActualPath(files, programFolder / PathFromText(fileName)), bytes);
}

}  // namespace bellmark
