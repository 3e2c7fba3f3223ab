#pragma once

#include "analysis/analysis.h"

namespace bellmark {

class Program;

/// Shows the warning of a statistical routine in a plain box. The program must outlive it.
AnalysisWarning WarnInBox(Program& program);

}  // namespace bellmark
