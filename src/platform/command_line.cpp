#include "platform/command_line.h"

#ifdef _WIN32
#include <windows.h>
// It needs what windows.h declares.
#include <shellapi.h>

#include "platform/files.h"
#endif

namespace bellmark {

#ifdef _WIN32

std::vector<std::string> CommandLineWords(int, char**) {
    SetConsoleOutputCP(CP_UTF8);
    int count = 0;
    wchar_t** words = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> texts;
    for (int i = 1; i < count; ++i) texts.push_back(PathText(Path(words[i])));
    LocalFree(words);
    return texts;
}

#else

std::vector<std::string> CommandLineWords(int count, char** words) {
    // A program may be started without even its name.
    return count > 1 ? std::vector<std::string>(words + 1, words + count) : std::vector<std::string>();
}

#endif

}  // namespace bellmark
