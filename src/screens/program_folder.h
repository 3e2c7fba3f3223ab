#pragma once

#include "platform/files.h"

namespace bellmark {

/// Where the program keeps its files: beside the executable when the center's configuration is there and the folder is
/// writable, otherwise in the user's data folder for the program, which is created when missing.
Path ChooseProgramFolder(const Path& executableFolder, const Path& userFolder);

}  // namespace bellmark
