#pragma once

#include "platform/files.h"

namespace bellmark {

class Program;

/// Prints a text file when the operator wants every report on paper. A printer failure is reported, and the work goes
/// on.
void PrintIfAsked(Program& program, const Path& file);

}  // namespace bellmark
