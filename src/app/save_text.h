#pragma once

#include <string_view>

#include "platform/files.h"

/// A run works from and in any folder, also one whose name the program's files cannot hold.
namespace bellmark {

class Program;

/// Replaces a text file. A path below the program folder that cannot be stored whole is stored from there on; what else
/// cannot be stored is left out, and the operator is told once. Throws FileError.
void SaveText(Program& program, const Path& path, std::string_view text);

/// A path as a file tells it: one that was stored from the program folder on is whole again.
Path StoredPath(const Program& program, const Path& path);

}  // namespace bellmark
