#pragma once

#include "platform/files.h"

namespace bellmark {

class PDDXFile;
class Program;

/// Writes the document in place of the file. A failure is shown in a box and leaves the old file; an empty path does
/// nothing.
bool SavePDDX(Program& program, const PDDXFile& document, const Path& path);

}  // namespace bellmark
