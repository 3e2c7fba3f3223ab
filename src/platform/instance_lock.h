#pragma once

#include "platform/files.h"

namespace bellmark {

/// One running program a program folder. The operating system drops the lock when the process dies, however it dies, so
/// that a killed program never keeps the next one out.
class InstanceLock {
  public:
    explicit InstanceLock(const Path& programFolder);
    ~InstanceLock();
    InstanceLock(const InstanceLock&) = delete;
    InstanceLock& operator=(const InstanceLock&) = delete;

    bool IsFirst() const { return first_; }  ///< false when another program holds the folder

  private:
    bool first_ = false;
#ifdef _WIN32
    void* handle_ = nullptr;
#else
    int file_ = -1;
#endif
};

}  // namespace bellmark
