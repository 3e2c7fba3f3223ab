#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/files.h"

/// How every file of an FWD comes into the program: asked for, its folder remembered, converted where it is not PDDX.
namespace bellmark {

class PDDXFile;
class Program;

struct FWDFileRequest {
    const char* title;         ///< of the file dialog
    const char* filter;        ///< of the file dialog
    bool convertsPDDX = true;  ///< PDDX files go through the converter, too
    bool copyIntoRun = true;   ///< the converter works on a copy in the run's data folder, not beside the FWD's file
};

struct FWDFile {
    Path chosen;           ///< as the operator chose it
    Path document;         ///< where its content stands as PDDX; the chosen file itself when nothing was converted
    bool isReady = false;  ///< the document is the chosen file itself, or the converter has made it just now
    bool told = false;     ///< the conversion failed, and the operator knows why
};

/// Nothing when the operator cancels.
std::optional<FWDFile> AskForFWDFile(Program& program, const FWDFileRequest& request);

/// True when the document is of the run's own FWD, as far as both tell, or the operator wants it all the same.
bool MayUseDocument(Program& program, const PDDXFile& document);

/// The lines of a list for a message box: the first ten, and how many more there are.
std::string ListedLines(const std::vector<std::string>& lines);

}  // namespace bellmark
