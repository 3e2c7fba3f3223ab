#include "platform/instance_lock.h"

#include <system_error>

#ifdef _WIN32
#include <windows.h>
#else
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#endif

namespace bellmark {

namespace {

constexpr const char* lockName = "Bellmark.lock";

std::string CannotBeLocked(const Path& folder, int reason) {
    return PathText(folder / lockName) + " cannot be locked (" + std::system_category().message(reason) +
           "), so another Bellmark could be at work in the same folder.";
}

}  // namespace

#ifdef _WIN32

InstanceLock::InstanceLock(const Path& programFolder) {
    const auto file = (programFolder / lockName).wstring();
    HANDLE handle =
        CreateFileW(file.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS, FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    first_ = handle != INVALID_HANDLE_VALUE;
    handle_ = first_ ? handle : nullptr;
    const DWORD reason = GetLastError();
    if (!first_ && reason != ERROR_SHARING_VIOLATION) {
        problem_ = CannotBeLocked(programFolder, static_cast<int>(reason));
    }
}

InstanceLock::~InstanceLock() {
    if (handle_) CloseHandle(handle_);
}

#else

namespace {

/// Every user of the machine may lock the file, whoever created it; read permission is enough. If it cannot be created,
/// the folder itself is locked. Returns -1 with errno when nothing can be opened.
int OpenForLocking(const Path& folder) {
    const Path path = folder / lockName;
    // Opened before it is created: some systems refuse to create an existing file of another user.
    int file = open(path.c_str(), O_RDWR | O_CLOEXEC);
    if (file >= 0 || errno != ENOENT) return file >= 0 ? file : open(path.c_str(), O_RDONLY | O_CLOEXEC);
    constexpr mode_t everyone = 0666;
    file = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, everyone);
    if (file < 0) return open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    // For network folders, where only a writable file can be locked. A failure is ignored: the file is locked as it is.
    static_cast<void>(fchmod(file, everyone));
    return file;
}

}  // namespace

InstanceLock::InstanceLock(const Path& programFolder) : file_(OpenForLocking(programFolder)) {
    first_ = file_ >= 0 && flock(file_, LOCK_EX | LOCK_NB) == 0;
    if (!first_ && errno != EWOULDBLOCK) problem_ = CannotBeLocked(programFolder, errno);
}

InstanceLock::~InstanceLock() {
    if (file_ >= 0) close(file_);
}

#endif

}  // namespace bellmark
