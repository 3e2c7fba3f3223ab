#pragma once

#include <cstdio>

namespace bellmark {

/// Whether somebody reads the stream on a terminal.
bool IsTerminal(std::FILE* stream);

/// Makes writing to a reader that has gone an error of the stream, instead of ending the program.
void ReportClosedOutput();

}  // namespace bellmark
