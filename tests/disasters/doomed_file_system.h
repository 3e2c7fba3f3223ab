#pragma once

#include <unistd.h>

#include <functional>

#include "platform/files.h"

namespace bellmark {

enum class Fate { Goes, Fails, EndsBefore, EndsHalfway };

/// Disks on which the n-th operation fails, or is the last thing that the process does. An operation is anything that
/// opens, writes, renames or removes.
class DoomedFileSystem : public DiskFileSystem {
  public:
    /// Asked before each operation.
    std::function<Fate(const char* operation, const Path& path)> FateOf = [](const char*, const Path&) {
        return Fate::Goes;
    };
    static constexpr const char* why = "the disk has failed";

    std::string ReadBytes(const Path& path, std::uintmax_t limit = defaultLimit) const override {
        Meet("read", path, [] {});
        return DiskFileSystem::ReadBytes(path, limit);
    }
    void ReplaceFile(const Path& path, std::string_view bytes) override {
        Meet("replace", path, [&] {
            // An interrupted write leaves half of the new bytes under a name of its own.
            DiskFileSystem::AppendToFile(path.parent_path() / ".bellmark-halfway.tmp",
                                         bytes.substr(0, bytes.size() / 2));
        });
        DiskFileSystem::ReplaceFile(path, bytes);
    }
    void AppendToFile(const Path& path, std::string_view bytes) override {
        Meet("append to", path, [&] { DiskFileSystem::AppendToFile(path, bytes.substr(0, bytes.size() / 2)); });
        DiskFileSystem::AppendToFile(path, bytes);
    }
    void CreateFolder(const Path& path) override {
        // An existing folder needs no operation.
        if (!IsFolder(path)) Meet("create", path, [] {});
        DiskFileSystem::CreateFolder(path);
    }
    void Rename(const Path& from, const Path& to) override {
        Meet("rename", from, [] {});
        DiskFileSystem::Rename(from, to);
    }
    void RemoveFile(const Path& path) override {
        if (IsFile(path)) Meet("remove", path, [] {});
        DiskFileSystem::RemoveFile(path);
    }
    void RemoveFolder(const Path& path) override {
        Meet("remove", path, [&] {
            const auto names = FileNames(path);
            for (std::size_t i = 0; i < names.size() / 2; ++i)
                DiskFileSystem::RemoveFile(path / PathFromText(names[i]));
        });
        DiskFileSystem::RemoveFolder(path);
    }

  private:
    template <class Half>
    void Meet(const char* operation, const Path& path, const Half& half) const {
        const Fate fate = FateOf(operation, path);
        if (fate == Fate::Fails) throw FileError(path, why);
        if (fate == Fate::Goes) return;
        if (fate == Fate::EndsHalfway) half();
        _exit(0);
    }
};

}  // namespace bellmark
