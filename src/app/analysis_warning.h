#pragma once

#include "analysis/analysis.h"

namespace bellmark {

class Program;

/// Shows what a statistical routine has to say in a plain box. The program must outlive it.
AnalysisWarning WarnInBox(Program& program);

}  // namespace bellmark
