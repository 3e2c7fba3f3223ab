#include "platform/instance_lock.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#endif

namespace bellmark {

namespace {
constexpr const char* lockName = "Bellmark.lock";
}

#ifdef _WIN32

InstanceLock::InstanceLock(const Path& programFolder) {
    const auto file = (programFolder / lockName).wstring();
    HANDLE handle =
        CreateFileW(file.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS, FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    first_ = handle != INVALID_HANDLE_VALUE;
    handle_ = first_ ? handle : nullptr;
}

InstanceLock::~InstanceLock() {
    if (handle_) CloseHandle(handle_);
}

#else

InstanceLock::InstanceLock(const Path& programFolder) {
    file_ = open((programFolder / lockName).c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
    // Where no lock file can be made (a read-only folder) nobody else can run a calibration either.
    first_ = file_ < 0 || flock(file_, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

InstanceLock::~InstanceLock() {
    if (file_ >= 0) close(file_);
}

#endif

}  // namespace bellmark
