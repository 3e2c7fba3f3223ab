#pragma once

#include <string>

#include "platform/files.h"

namespace bellmark {

/// Allows one running program per program folder, for all users. The operating system drops the lock when the process
/// ends for any reason, so that a killed program never keeps the next one out.
class InstanceLock {
  public:
    explicit InstanceLock(const Path& programFolder);
    ~InstanceLock();
    InstanceLock(const InstanceLock&) = delete;
    InstanceLock& operator=(const InstanceLock&) = delete;

    /// False when another program holds the folder, or when that cannot be found out.
    bool IsFirst() const { return first_; }

    /// Why the folder could not be locked, in words for the operator; empty when it was, or when another program has
    /// it.
    const std::string& Problem() const { return problem_; }

  private:
    bool first_ = false;
    std::string problem_;
#ifdef _WIN32
    void* handle_ = nullptr;
#else
    int file_ = -1;
#endif
};

}  // namespace bellmark
