#pragma once

#include "platform/files.h"

namespace bellmark {

/// Where the program keeps its files: beside the executable when the center's configuration lies there and the folder
/// can be written to, otherwise in the user's data folder for the program, which is made when it is missing.
Path ChooseProgramFolder(const Path& executableFolder, const Path& userFolder);

}  // namespace bellmark
