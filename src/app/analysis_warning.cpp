#include "app/analysis_warning.h"

#include "app/program.h"

namespace bellmark {

AnalysisWarning WarnInBox(Program& program) {
    constexpr int okAlone = 0;
    return [&program](const char* text) { program.ShowBox(text, okAlone); };
}

}  // namespace bellmark
