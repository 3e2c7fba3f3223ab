#pragma once

#include <string>
#include <vector>

namespace bellmark {

/// The words after the program's name, as UTF-8. Windows hands main() words of its code page, in which a letter may be
/// missing: there they are taken from the command line itself, and the console shows UTF-8 from then on.
/// count, words: as main() has them.
std::vector<std::string> CommandLineWords(int count, char** words);

}  // namespace bellmark
