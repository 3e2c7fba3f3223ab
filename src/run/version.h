#pragma once

#include <string>

namespace bellmark {

struct ProgramVersion {
    std::string number;  ///< major.minor.revision
    std::string buildDate;
};
ProgramVersion VersionOfProgram();

/// Version and build date, as the start form shows them and files carry them.
std::string VersionText();

}  // namespace bellmark
