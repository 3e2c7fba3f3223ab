#pragma once

#include <string>
#include <string_view>

#include "platform/files.h"

/// The center's configuration on disk: the master copy beside the program, and the copy of the run in hand.
namespace bellmark {

class Program;

/// Sets the keys in a file and leaves all else in it. Throws FileError.
void WriteCenterDataToPDDX(Program& program, const Path& path);

/// Sets one key of a file. Throws FileError.
void WriteKey(Program& program, const Path& path, std::string_view section, std::string_view key,
              std::string_view value);

/// Why the file is not taken for a center's configuration, in words for the operator; empty when it is one.
std::string CenterFileFault(const FileSystem& files, const Path& path);

/// The master copy beside the program, and the copy of the run in hand; one and the same before a run has a name.
Path MasterCenterConfig(const Program& program);
Path RunCenterConfig(const Program& program);

}  // namespace bellmark
