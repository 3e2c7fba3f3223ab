#pragma once

#include <memory>

#include "app/program.h"

namespace bellmark {

/// Builds a whole program from the subsystems; no other library knows them all. The machine must outlive it.
std::unique_ptr<Program> AssembleProgram(Machine& machine);

}  // namespace bellmark
