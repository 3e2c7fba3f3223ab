#pragma once

#include <string_view>

#include "platform/files.h"

/// A run works in any folder, even one whose name the program's files cannot hold.
namespace bellmark {

class Program;

/// Replaces a text file. A path below the program folder that cannot be stored whole is stored relative to it. What
/// else cannot be stored is left out, and the operator is told once. Throws FileError.
void SaveText(Program& program, const Path& path, std::string_view text);

/// A path read from a file; one that was stored relative to the program folder is made whole again.
Path StoredPath(const Program& program, const Path& path);

}  // namespace bellmark
