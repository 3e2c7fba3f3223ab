#pragma once

#include "platform/files.h"

namespace bellmark {

class Program;

/// Prints a text file when the operator wants every report on paper. A printer that is out is told of, and never costs
/// what follows.
void PrintIfAsked(Program& program, const Path& file);

}  // namespace bellmark
