#pragma once

#include <string>
#include <string_view>

#include "run/calibration_run.h"

/// The files that FWDs write: which are offered to the operator, and what the external converter calls them.
namespace bellmark {

/// Filter of the dialog for a trial's drop data. The last pair stands the wrong way round in all of them.
const char* DropDataFilter(Make make);

/// Number of a file's form for the converter, by maker and extension; 0 is PDDX, which every maker may have.
int FWDFileType(Make make, std::string_view extension);

/// Filter of the dialog for an FWD's configuration. A JILS has three such files, read one after the other: the next one
/// to be read comes first, by the extension of the one that was read last.
const char* ConfigurationFilter(Make make);
const char* NextJilsFilter(std::string_view lastExtension);

}  // namespace bellmark
