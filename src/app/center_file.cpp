#include "app/center_file.h"

#include "app/program.h"
#include "app/save_text.h"
#include "platform/date_time.h"
#include "platform/profile_strings.h"
#include "run/center_keys.h"
#include "run/paths.h"

namespace bellmark {

namespace {

/// A file that is there but cannot be read must not be taken for an empty one, or the change would cost all it holds.
/// change: called with the file's strings and its path.
template <class Change>
void ChangeFile(Program& program, const Path& path, Change change) {
    FileSystem& files = program.Services.files;
    const Path file = ActualPath(files, path);
    ProfileStrings strings = files.IsFile(file) ? ProfileStrings(ReadTextFile(files, file)) : ProfileStrings();
    change(strings, file);
    // The data folder of a run comes into being with the first that is written into it.
    files.CreateFolder(file.parent_path());
    SaveText(program, file, strings.Text());
}

}  // namespace

void WriteCenterDataToPDDX(Program& program, const Path& path) {
    ChangeFile(program, path, [&](ProfileStrings& strings, const Path& file) {
        SetCenterKeys(strings, program.Center, program.Run.EnglishUnits, file, program.Now());
    });
}

void WriteKey(Program& program, const Path& path, std::string_view section, std::string_view key,
              std::string_view value) {
    ChangeFile(program, path, [&](ProfileStrings& strings, const Path&) { strings.Set(section, key, value); });
}

namespace {

/// A date that cannot be read would be written back as the zero date with the next save.
std::string DateFault(const ProfileStrings& strings, const Path& path) {
    for (const char* key : {"ReferenceLoadCellCalibrationDate", "AccelReferenceCalibrationDate",
                            "AccelDailyCalibrationDate", "AccelDailyCalibrationTime"}) {
        const std::string text = strings.Get(centerSection, key);
        if (text.empty() || ReadDateTime(text)) continue;
        return PathText(path) + " cannot be used: " + key + " is \"" + text +
               "\". Dates are written 09-Mar-2012, or with the month first and a year of four digits, 03-09-2012.";
    }
    return {};
}

}  // namespace

std::string CenterFileFault(const FileSystem& files, const Path& path) {
    try {
        const ProfileStrings strings(ReadTextFile(files, path));
        if (!strings.HasSection(centerSection)) {
            return PathText(path) + " is no configuration of a calibration center: it has no section [" +
                   centerSection + "].";
        }
        return DateFault(strings, path);
    } catch (const FileError& error) {
        return std::string("The configuration of the calibration center cannot be read.\r\n") + error.what();
    }
}

Path MasterCenterConfig(const Program& program) {
    return ActualPath(program.Services.files, program.Folder() / centerConfigName);
}

Path RunCenterConfig(const Program& program) {
    return ActualPath(program.Services.files, program.InterimFolder() / centerConfigName);
}

}  // namespace bellmark
