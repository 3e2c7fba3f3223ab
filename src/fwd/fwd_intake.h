#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/files.h"

/// The way of every FWD file into the program: the operator chooses it, its folder is remembered, and it is converted
/// if it is not PDDX.
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
    Path document;         ///< the content as PDDX; the chosen file itself when nothing was converted
    bool isReady = false;  ///< the document is the chosen file itself, or was just converted
    bool told = false;     ///< the conversion failed, and the operator was told why
};

/// Where the dialog starts: the folder that FWD files are fetched from. A run under review has its FWD files beside its
/// drops when there are none in that folder by now.
Path FolderOfFWDFiles(const Program& program);

/// Nothing when the operator cancels.
std::optional<FWDFile> AskForFWDFile(Program& program, const FWDFileRequest& request);

/// True when the document is of the run's own FWD, as far as both identify it, or the operator wants it anyway.
bool MayUseDocument(Program& program, const PDDXFile& document);

/// The lines of a list for a message box: the first ten, and how many more there are.
std::string ListedLines(const std::vector<std::string>& lines);

}  // namespace bellmark
