#include "platform/terminal.h"

#include <csignal>

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace bellmark {

#ifdef _WIN32

bool IsTerminal(std::FILE* stream) {
    return _isatty(_fileno(stream)) != 0;
}

void ReportClosedOutput() {}  // the system does so always

#else

bool IsTerminal(std::FILE* stream) {
    return isatty(fileno(stream)) == 1;
}

void ReportClosedOutput() {
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
}

#endif

}  // namespace bellmark
