#pragma once

#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace bellmark {

using Path = std::filesystem::path;

/// A file operation that failed: which file, and why in words for the operator.
class FileError : public std::runtime_error {
  public:
    FileError(const Path& path, const std::string& reason);
    const Path& File() const { return path_; }

  private:
    Path path_;
};

/// Everything the logic does with disks. Names are UTF-8.
class FileSystem {
  public:
    virtual ~FileSystem() = default;

    virtual bool IsFile(const Path& path) const = 0;
    virtual bool IsFolder(const Path& path) const = 0;

    /// Whole content. Throws FileError when it cannot be read, is no plain file, or is larger than the limit in bytes.
    virtual std::string ReadBytes(const Path& path, std::uintmax_t limit = defaultLimit) const = 0;

    /// The same into a text whose memory is used again: for many files one after the other.
    virtual void ReadBytesInto(const Path& path, std::string& bytes, std::uintmax_t limit = defaultLimit) const {
        bytes = ReadBytes(path, limit);
    }

    /// Puts the bytes in place of the file so that a power cut leaves the old content or the new: written beside it,
    /// flushed to disk, renamed. Throws FileError and leaves the old file when that fails.
    virtual void ReplaceFile(const Path& path, std::string_view bytes) = 0;
    virtual void AppendToFile(const Path& path, std::string_view bytes) = 0;

    /// Names, sorted without regard to case; system and hidden folders are left out. Empty when the folder is missing.
    virtual std::vector<std::string> FileNames(const Path& folder) const = 0;
    virtual std::vector<std::string> FolderNames(const Path& folder) const = 0;

    virtual void CreateFolder(const Path& path) = 0;  ///< with its parents; nothing when it exists
    virtual void CopyFile(const Path& from, const Path& to) = 0;
    virtual void Rename(const Path& from, const Path& to) = 0;
    virtual void RemoveFile(const Path& path) = 0;    ///< nothing when it is not there
    virtual void RemoveFolder(const Path& path) = 0;  ///< with all it holds; nothing when it is not there

    /// Removes the temporary files that an interrupted ReplaceFile left in the folder. Only for folders where no other
    /// program writes. A file that cannot be removed stays.
    virtual void RemoveTemporaryFiles(const Path& folder) = 0;

    static constexpr std::uintmax_t defaultLimit = std::uintmax_t{64} * 1024 * 1024;
};

/// The machine's own disks.
class DiskFileSystem : public FileSystem {
  public:
    bool IsFile(const Path& path) const override;
    bool IsFolder(const Path& path) const override;
    std::string ReadBytes(const Path& path, std::uintmax_t limit = defaultLimit) const override;
    void ReadBytesInto(const Path& path, std::string& bytes, std::uintmax_t limit = defaultLimit) const override;
    void ReplaceFile(const Path& path, std::string_view bytes) override;
    void AppendToFile(const Path& path, std::string_view bytes) override;
    std::vector<std::string> FileNames(const Path& folder) const override;
    std::vector<std::string> FolderNames(const Path& folder) const override;
    void CreateFolder(const Path& path) override;
    void CopyFile(const Path& from, const Path& to) override;
    void Rename(const Path& from, const Path& to) override;
    void RemoveFile(const Path& path) override;
    void RemoveFolder(const Path& path) override;
    void RemoveTemporaryFiles(const Path& folder) override;
};

/// Whether a whole name fits a pattern: "*" is any number of characters, "?" exactly one; letters without case.
bool MatchesPattern(std::string_view name, std::string_view pattern);

/// The names of FileNames that fit the pattern, in the same order.
std::vector<std::string> FilesMatching(const FileSystem& files, const Path& folder, std::string_view pattern);

/// A text file as UTF-8: Windows-1252 on disk, or UTF-16 with its mark. Characters missing from the code page are not
/// stored (platform/file_text.h); saving never fails because of them.
std::string ReadTextFile(const FileSystem& files, const Path& path, std::uintmax_t limit = FileSystem::defaultLimit);
void ReplaceTextFile(FileSystem& files, const Path& path, std::string text);

std::string PathText(const Path& path);    ///< UTF-8, in the machine's own notation
Path PathFromText(std::string_view text);  ///< from UTF-8

/// True when the path, which may hold wild cards in its last part, matches a file; names compare without case.
bool FileExists(const FileSystem& files, const Path& path);

/// Names of the subfolders that begin with the prefix, without case; an empty prefix takes all.
std::vector<std::string> ListSubFolders(const FileSystem& files, const Path& folder, std::string_view prefix);
/// Names of the files that match a wild-card pattern, or begin with a prefix. None is an empty list.
std::vector<std::string> ListFiles(const FileSystem& files, const Path& folder, std::string_view pattern);
std::vector<std::string> ListFilesWithPrefix(const FileSystem& files, const Path& folder, std::string_view prefix);

}  // namespace bellmark
