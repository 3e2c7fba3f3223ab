#include "run/version.h"

namespace bellmark {

ProgramVersion VersionOfProgram() {
    return {BELLMARK_VERSION, BELLMARK_BUILD_DATE};
}

std::string VersionText() {
    const ProgramVersion version = VersionOfProgram();
    return "Version " + version.number + "  " + version.buildDate;
}

}  // namespace bellmark
