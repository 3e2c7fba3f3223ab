#pragma once

#include <vector>

#include "platform/files.h"

namespace bellmark {

class Program;

/// True when nothing of that name is there, or the operator agrees that it is replaced.
bool CheckReportOverwrite(Program& program, const Path& path);
/// The same of several files in one question.
bool CheckReportsOverwrite(Program& program, const std::vector<Path>& paths);

struct Conversion {
    Path path;          ///< of the document, or the path that was given when nothing was converted
    bool done = false;  ///< a new document is there
    bool told = false;  ///< it failed, and the operator has been told why
};

/// Has the external converter turn an FWD's file into a PDDX document: "<name>cvt.ddx" beside it. With copyIntoRun the
/// file is first copied into the run's data folder; one that the run has already is never replaced by another of its
/// name. An existing document is replaced only when the operator says so. The converter's document is waited for, 60
/// seconds at most, since an old one must never be read in its place; the operator can end the wait.
Conversion ConvertFWDFile(Program& program, const Path& file, int fileType, bool copyIntoRun);

}  // namespace bellmark
