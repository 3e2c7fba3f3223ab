#pragma once

#include <memory>

#include "app/program.h"

namespace bellmark {

/// A whole program out of the subsystems: the one place that knows them all. The machine outlives it.
std::unique_ptr<Program> AssembleProgram(Machine& machine);

}  // namespace bellmark
