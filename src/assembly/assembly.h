#pragma once

#include <memory>

namespace bellmark {

class Program;
struct Machine;

/// A whole program out of the subsystems: the one place that knows them all. The machine outlives it.
std::unique_ptr<Program> AssembleProgram(Machine& machine);

}  // namespace bellmark
