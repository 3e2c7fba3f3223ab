#pragma once

#include <string>
#include <string_view>

#include "run/calibration_run.h"

/// The files that FWDs write: the filters offered to the operator, and the converter's numbers for them.
namespace bellmark {

/// Filter of the dialog for a trial's drop data. The last pair is reversed in all of them.
const char* DropDataFilter(Make make);

/// Number of a file's form for the converter, by maker and extension; 0 is PDDX, which every maker may have.
int FWDFileType(Make make, std::string_view extension);

/// Filter of the dialog for an FWD's configuration. A JILS has three such files, read one after the other: the next one
/// to be read is first, depending on the extension of the last one read.
const char* ConfigurationFilter(Make make);
const char* NextJilsFilter(std::string_view lastExtension);

}  // namespace bellmark
