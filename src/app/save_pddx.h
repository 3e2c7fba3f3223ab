#pragma once

#include <functional>
#include <string>

#include "platform/files.h"

namespace bellmark {

class PDDXFile;
class Program;

/// Writes the document in place of the file. A failure is shown in a box and leaves the old file; an empty path does
/// nothing. complete: adds to the text what the document does not hold; it may throw.
bool SavePDDX(Program& program, const PDDXFile& document, const Path& path,
              const std::function<void(std::string& text)>& complete = {});

}  // namespace bellmark
