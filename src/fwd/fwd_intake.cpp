#include "fwd/fwd_intake.h"

#include <algorithm>

#include "app/program.h"
#include "fwd/convert_fwd_file.h"
#include "fwd/fwd_files.h"
#include "fwd/fwd_peaks.h"
#include "platform/dialogs.h"
#include "platform/numbers.h"
#include "platform/text.h"

namespace bellmark {

namespace {

bool HoldsFWDFiles(const Program& program, const Path& folder) {
    const std::string filter = DropDataFilter(program.Run.Manufacturer);
    const std::size_t begin = filter.find('|') + 1;
    const std::string own = filter.substr(begin, filter.find('|', begin) - begin);
    const FileSystem& files = program.Services.files;
    return !FilesMatching(files, folder, own).empty() || !FilesMatching(files, folder, "*cvt.ddx").empty();
}

}  // namespace

Path FolderOfFWDFiles(const Program& program) {
    const Path transfer = PathFromText(program.Center.LocationOfFWDDataTransfer);
    const bool looksElsewhere = program.Run.ReviewMode && !HoldsFWDFiles(program, transfer);
    return looksElsewhere && HoldsFWDFiles(program, program.SimDataFolder()) ? program.SimDataFolder() : transfer;
}

std::optional<FWDFile> AskForFWDFile(Program& program, const FWDFileRequest& request) {
    const auto chosen =
        program.Services.dialogs.OpenFile({request.title, request.filter, FolderOfFWDFiles(program), ""});
    if (!chosen) return {};
    const Path file = program.Services.startDirectory / *chosen;
    // With the final separator that folders have in the files.
    program.Center.LocationOfFWDDataTransfer = PathText(file.parent_path() / "");
    const int type = FWDFileType(program.Run.Manufacturer, FileExtension(PathText(file)));
    if (type == 0 && !request.convertsPDDX) return FWDFile{file, file, true, false};
    const Conversion conversion = ConvertFWDFile(program, file, type, request.copyIntoRun);
    return FWDFile{file, conversion.path, conversion.done, conversion.told};
}

bool MayUseDocument(Program& program, const PDDXFile& document) {
    const auto differences = DifferencesFromRun(document, program.Run);
    if (differences.empty()) return true;
    const std::string question =
        "This file is of another device:\r\n" + ListedLines(differences) + "Do you want to use it all the same?";
    return program.ShowBox(question, box::yesNo + box::exclamation + box::secondIsDefault) == Answer::Yes;
}

std::string ListedLines(const std::vector<std::string>& lines) {
    constexpr std::size_t mostListed = 10;
    std::string text;
    for (std::size_t i = 0; i < std::min(mostListed, lines.size()); ++i) text += "     " + lines[i] + "\r\n";
    if (lines.size() > mostListed) text += "     and " + NumberText(lines.size() - mostListed) + " more\r\n";
    return text;
}

}  // namespace bellmark
