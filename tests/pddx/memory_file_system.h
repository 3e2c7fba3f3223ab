#pragma once

#include <map>
#include <string>

#include "platform/files.h"

namespace bellmark {

/// Read-only files, held in memory.
class MemoryFileSystem : public FileSystem {
  public:
    std::map<Path, std::string> contents;

    bool IsFile(const Path& path) const override { return contents.count(path) > 0; }
    std::string ReadBytes(const Path& path, std::uintmax_t) const override {
        if (!IsFile(path)) throw FileError(path, "it is not there");
        return contents.at(path);
    }

    bool IsFolder(const Path&) const override { return false; }
    std::vector<std::string> FileNames(const Path&) const override { return {}; }
    std::vector<std::string> FolderNames(const Path&) const override { return {}; }

    void ReplaceFile(const Path& path, std::string_view) override { Refuse(path); }
    void AppendToFile(const Path& path, std::string_view) override { Refuse(path); }
    void CreateFolder(const Path& path) override { Refuse(path); }
    void CopyFile(const Path&, const Path& to) override { Refuse(to); }
    void Rename(const Path&, const Path& to) override { Refuse(to); }
    void RemoveFile(const Path& path) override { Refuse(path); }
    void RemoveFolder(const Path& path) override { Refuse(path); }
    void RemoveTemporaryFiles(const Path& folder) override { Refuse(folder); }

  private:
    [[noreturn]] static void Refuse(const Path& path) { throw FileError(path, "it can only be read"); }
};

}  // namespace bellmark
