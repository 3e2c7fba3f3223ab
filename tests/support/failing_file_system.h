#pragma once

#include "platform/files.h"

namespace bellmark {

/// The machine's disks, with a chosen write that fails as on a full disk, and a file that must not be read.
class FailingFileSystem : public DiskFileSystem {
  public:
    /// The n-th write from now on (1 is the next) and all later ones fail; 0 lets all pass.
    void FailFromWrite(int n) { writesUntilFailure_ = n; }

    /// The same for moving and removing files, which need no space.
    void FailFromMove(int n) { movesUntilFailure_ = n; }

    void RefuseToRead(const Path& path) { unreadable_ = path; }
    void RefuseToMove(const Path& path) { immovable_ = path; }

    int WritesTried() const { return writesTried_; }

    std::string ReadBytes(const Path& path, std::uintmax_t limit = defaultLimit) const override {
        if (path == unreadable_) throw FileError(path, "permission denied");
        return DiskFileSystem::ReadBytes(path, limit);
    }
    void ReplaceFile(const Path& path, std::string_view bytes) override {
        CountWrite(path);
        DiskFileSystem::ReplaceFile(path, bytes);
    }
    void AppendToFile(const Path& path, std::string_view bytes) override {
        CountWrite(path);
        DiskFileSystem::AppendToFile(path, bytes);
    }
    void CreateFolder(const Path& path) override {
        CountWrite(path);
        DiskFileSystem::CreateFolder(path);
    }

    void Rename(const Path& from, const Path& to) override {
        if (from == immovable_) throw FileError(from, "in use by another program");
        CountMove(from);
        DiskFileSystem::Rename(from, to);
    }
    void RemoveFile(const Path& path) override {
        CountMove(path);
        DiskFileSystem::RemoveFile(path);
    }

  private:
    void CountMove(const Path& path) {
        if (movesUntilFailure_ == 1) throw FileError(path, "in use by another program");
        if (movesUntilFailure_ > 1) --movesUntilFailure_;
    }

    void CountWrite(const Path& path) {
        ++writesTried_;
        if (writesUntilFailure_ == 0) return;
        if (writesUntilFailure_ == 1) throw FileError(path, "no space left on device");
        --writesUntilFailure_;
    }

    int writesUntilFailure_ = 0;
    int writesTried_ = 0;
    int movesUntilFailure_ = 0;
    Path unreadable_;
    Path immovable_;
};

}  // namespace bellmark
