#include "screens/program_folder.h"

#include <QFileInfo>

namespace bellmark {

Path ChooseProgramFolder(const Path& executableFolder, const Path& userFolder) {
    const bool holdsCenter = std::filesystem::is_regular_file(executableFolder / "BellmarkCenterConfig.ini");
    const QFileInfo folder(QString::fromStdString(PathText(executableFolder)));
    if (holdsCenter && folder.isWritable()) return executableFolder;
    std::filesystem::create_directories(userFolder);
    return userFolder;
}

}  // namespace bellmark
