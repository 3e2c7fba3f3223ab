#include "fwd/fwd_intake.h"

#include "app/program.h"
#include "fwd/convert_fwd_file.h"
#include "fwd/fwd_files.h"
#include "platform/dialogs.h"
#include "platform/text.h"

namespace bellmark {

std::optional<FWDFile> AskForFWDFile(Program& program, const FWDFileRequest& request) {
    const Path start = PathFromText(program.Center.LocationOfFWDDataTransfer);
    const auto chosen = program.Services.dialogs.OpenFile({request.title, request.filter, start, ""});
    if (!chosen) return {};
    const Path file = program.Services.startDirectory / *chosen;
    // With the final separator that folders in the files carry.
    program.Center.LocationOfFWDDataTransfer = PathText(file.parent_path() / "");
    const int type = FWDFileType(program.Run.Manufacturer, FileExtension(PathText(file)));
    if (type == 0 && !request.convertsPDDX) return FWDFile{file, file, true, false};
    const Conversion conversion = ConvertFWDFile(program, file, type, request.copyIntoRun);
    return FWDFile{file, conversion.path, conversion.done, conversion.told};
}

}  // namespace bellmark
