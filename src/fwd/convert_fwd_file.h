#pragma once

#include <vector>

#include "platform/files.h"

namespace bellmark {

class Program;

/// True when no such file exists, or the operator agrees to replace it.
bool CheckReportOverwrite(Program& program, const Path& path);
/// The same for several files in one question.
bool CheckReportsOverwrite(Program& program, const std::vector<Path>& paths);

struct Conversion {
    Path path;          ///< of the document, or the path that was given when nothing was converted
    bool done = false;  ///< a new document exists
    bool told = false;  ///< it failed, and the operator has been told why
};

/// Has the external converter turn an FWD's file into a PDDX document: "<name>cvt.ddx" beside it. With copyIntoRun the
/// file is first copied into the run's data folder; a file already there is never replaced by another of its name. An
/// existing document is replaced only if the operator agrees. Waits up to 60 seconds for the converter's document, so
/// that an old one is never read in its place; the operator can end the wait.
Conversion ConvertFWDFile(Program& program, const Path& file, int fileType, bool copyIntoRun);

}  // namespace bellmark
