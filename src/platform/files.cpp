#include "platform/files.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <limits>
#include <memory>
#include <system_error>

#include "platform/file_text.h"
#include "platform/numbers.h"
#include "platform/text.h"

#ifdef _WIN32
#include <io.h>
#include <process.h>
#else
#include <fcntl.h>
#include <unistd.h>
#endif

namespace bellmark {

namespace disk = std::filesystem;

namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { static_cast<void>(std::fclose(file)); }
};
using OpenFile = std::unique_ptr<std::FILE, CloseFile>;

[[noreturn]] void Fail(const Path& path, const std::error_code& error) {
    throw FileError(path, error.message());
}

/// The reason of the C library's last failing call.
[[noreturn]] void FailWithLastError(const Path& path) {
    Fail(path, {errno, std::generic_category()});
}

// What differs between the systems: file names, flushing to the disk, hidden files.
#ifdef _WIN32

OpenFile Open(const Path& path, const char* mode) {
    return OpenFile(_wfopen(path.c_str(), std::wstring(mode, mode + std::char_traits<char>::length(mode)).c_str()));
}

bool FlushToDisk(std::FILE* file) {
    return std::fflush(file) == 0 && _commit(_fileno(file)) == 0;
}

void FlushFolder(const Path&) {}  // the system writes its folders through

long long ProcessNumber() {
    return _getpid();
}

bool IsHidden(const Path& path) {
    _wfinddata_t entry{};
    const intptr_t search = _wfindfirst(path.c_str(), &entry);
    if (search == -1) return false;
    _findclose(search);
    return (entry.attrib & (_A_HIDDEN | _A_SYSTEM)) != 0;
}

#else

OpenFile Open(const Path& path, const char* mode) {
    return OpenFile(std::fopen(path.c_str(), mode));
}

bool FlushToDisk(std::FILE* file) {
    return std::fflush(file) == 0 && fsync(fileno(file)) == 0;
}

/// Makes a rename permanent. Some network folders cannot be flushed. The file itself is complete by then, so that is no
/// error.
void FlushFolder(const Path& folder) {
    const int handle = open(folder.c_str(), O_RDONLY | O_DIRECTORY);
    if (handle < 0) return;
    static_cast<void>(fsync(handle));
    static_cast<void>(close(handle));
}

long long ProcessNumber() {
    return getpid();
}

bool IsHidden(const Path& path) {
    return StartsWith(path.filename().native(), ".");
}

#endif

/// Whether a plain file is there. Throws FileError when something else is.
bool PlainFileExists(const Path& path) {
    std::error_code error;
    const disk::file_status status = disk::status(path, error);
    if (!disk::status_known(status)) Fail(path, error);
    if (!disk::exists(status)) return false;
    if (disk::is_directory(status)) throw FileError(path, "is a folder");
    if (!disk::is_regular_file(status)) throw FileError(path, "is no plain file");
    return true;
}

void WriteAll(std::FILE* file, std::string_view bytes, const Path& path) {
    if (std::fwrite(bytes.data(), 1, bytes.size(), file) != bytes.size()) FailWithLastError(path);
}

constexpr const char* temporaryPrefix = ".bellmark-";
constexpr const char* temporaryEnding = ".tmp";

/// A new file that is removed again unless it was renamed to its place.
class TemporaryFile {
  public:
    explicit TemporaryFile(const Path& target) : target_(target) {
        const std::string stem = temporaryPrefix + NumberText(ProcessNumber()) + "-";
        for (int i = 0; !file_; ++i) {
            path_ = target_.parent_path() / (stem + NumberText(i) + temporaryEnding);
            file_ = Open(path_, "wbx");
            if (!file_ && errno != EEXIST) FailWithLastError(target_);
        }
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() {
        if (renamed_) return;
        file_.reset();
        std::error_code ignored;
        disk::remove(path_, ignored);
    }

    void Write(std::string_view bytes) {
        WriteAll(file_.get(), bytes, target_);
        if (!FlushToDisk(file_.get())) FailWithLastError(target_);
        if (std::fclose(file_.release()) != 0) FailWithLastError(target_);
    }

    void SetPermissions(disk::perms permissions) {
        std::error_code error;
        disk::permissions(path_, permissions, error);
        if (error) Fail(target_, error);
    }

    void RenameToTarget() {
        std::error_code error;
        disk::rename(path_, target_, error);
        if (error) Fail(target_, error);
        renamed_ = true;
        FlushFolder(target_.has_parent_path() ? target_.parent_path() : Path("."));
    }

  private:
    Path target_;
    Path path_;
    OpenFile file_;
    bool renamed_ = false;
};

/// Permissions of the file to be replaced. A write-protected file is refused, although its folder would allow a rename
/// over it.
disk::perms PermissionsForReplacing(const Path& path) {
    std::error_code error;
    const disk::perms permissions = disk::status(path, error).permissions();
    if (error) Fail(path, error);
    constexpr disk::perms anyWrite = disk::perms::owner_write | disk::perms::group_write | disk::perms::others_write;
    if ((permissions & anyWrite) == disk::perms::none) throw FileError(path, "is write-protected");
    return permissions;
}

std::string LimitText(std::uintmax_t limit) {
    constexpr std::uintmax_t megabyte = std::uintmax_t{1024} * 1024;
    const bool inMegabytes = limit >= megabyte;
    return NumberText(static_cast<long long>(inMegabytes ? limit / megabyte : limit)) +
           (inMegabytes ? " MB" : " bytes");
}

std::vector<std::string> SortedNames(const Path& folder, bool folders) {
    std::vector<std::string> names;
    std::error_code error;
    for (disk::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        std::error_code unreadable;
        const bool wanted = folders ? entry->is_directory(unreadable) : entry->is_regular_file(unreadable);
        if (wanted && !IsHidden(entry->path())) names.push_back(PathText(entry->path().filename()));
    }
    std::sort(names.begin(), names.end(), [](const std::string& a, const std::string& b) {
        const std::string lowerA = LowerCase(a);
        const std::string lowerB = LowerCase(b);
        return lowerA != lowerB ? lowerA < lowerB : a < b;
    });
    return names;
}

/// Bytes of the character that the text starts with.
std::size_t FirstCharacterLength(std::string_view text) {
    return FirstCharacters(text, 1).size();
}

}  // namespace

FileError::FileError(const Path& path, const std::string& reason)
    : std::runtime_error(PathText(path) + ": " + reason), path_(path) {}

bool DiskFileSystem::IsFile(const Path& path) const {
    std::error_code error;
    return disk::is_regular_file(path, error);
}

bool DiskFileSystem::IsFolder(const Path& path) const {
    std::error_code error;
    return disk::is_directory(path, error);
}

std::string DiskFileSystem::ReadBytes(const Path& path, std::uintmax_t limit) const {
    std::string bytes;
    DiskFileSystem::ReadBytesInto(path, bytes, limit);
    return bytes;
}

void DiskFileSystem::ReadBytesInto(const Path& path, std::string& bytes, std::uintmax_t limit) const {
    if (!PlainFileExists(path)) Fail(path, std::make_error_code(std::errc::no_such_file_or_directory));
    const OpenFile file = Open(path, "rb");
    if (!file) FailWithLastError(path);
    std::error_code error;
    const std::uintmax_t size = disk::file_size(path, error);
    if (error) Fail(path, error);
    if (size > limit) throw FileError(path, "is larger than " + LimitText(limit));
    bytes.resize(static_cast<std::size_t>(size));
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file.get()));
    if (std::ferror(file.get()) != 0) FailWithLastError(path);
}

void DiskFileSystem::ReplaceFile(const Path& path, std::string_view bytes) {
    std::error_code error;
    // A link stays a link: its target is replaced.
    const Path target =
        disk::is_symlink(path, error) && disk::exists(path, error) ? disk::canonical(path, error) : path;
    const bool exists = PlainFileExists(target);
    const disk::perms permissions = exists ? PermissionsForReplacing(target) : disk::perms::none;
    TemporaryFile temporary(target);
    temporary.Write(bytes);
    if (exists) temporary.SetPermissions(permissions);
    temporary.RenameToTarget();
}

void DiskFileSystem::AppendToFile(const Path& path, std::string_view bytes) {
    PlainFileExists(path);
    OpenFile file = Open(path, "ab");
    if (!file) FailWithLastError(path);
    WriteAll(file.get(), bytes, path);
    if (std::fclose(file.release()) != 0) FailWithLastError(path);
}

std::vector<std::string> DiskFileSystem::FileNames(const Path& folder) const {
    return SortedNames(folder, false);
}
std::vector<std::string> DiskFileSystem::FolderNames(const Path& folder) const {
    return SortedNames(folder, true);
}

void DiskFileSystem::CreateFolder(const Path& path) {
    std::error_code error;
    disk::create_directories(path, error);
    if (error) Fail(path, error);
}

void DiskFileSystem::CopyFile(const Path& from, const Path& to) {
    ReplaceFile(to, ReadBytes(from, std::numeric_limits<std::uintmax_t>::max()));
}

void DiskFileSystem::Rename(const Path& from, const Path& to) {
    std::error_code error;
    disk::rename(from, to, error);
    if (error) Fail(from, error);
}

void DiskFileSystem::RemoveFile(const Path& path) {
    std::error_code error;
    if (disk::is_directory(disk::symlink_status(path, error))) throw FileError(path, "is a folder");
    disk::remove(path, error);
    if (error) Fail(path, error);
}

void DiskFileSystem::RemoveFolder(const Path& path) {
    std::error_code error;
    if (disk::exists(path, error) && !disk::is_directory(path, error)) throw FileError(path, "is no folder");
    disk::remove_all(path, error);
    if (error) Fail(path, error);
}

void DiskFileSystem::RemoveTemporaryFiles(const Path& folder) {
    std::vector<Path> leftovers;
    std::error_code error;
    for (disk::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        const std::string name = PathText(entry->path().filename());
        const bool isTemporary = StartsWith(name, temporaryPrefix) && name.ends_with(temporaryEnding);
        if (isTemporary) leftovers.push_back(entry->path());
    }
    for (const Path& leftover : leftovers) disk::remove(leftover, error);
}

bool MatchesPattern(std::string_view name, std::string_view pattern) {
    std::string_view retryName;
    std::string_view retryPattern;
    bool starSeen = false;
    while (!name.empty()) {
        if (!pattern.empty() && pattern[0] == '*') {
            pattern.remove_prefix(1);
            retryPattern = pattern;
            retryName = name;
            starSeen = true;
        } else if (!pattern.empty() && pattern[0] == '?') {
            pattern.remove_prefix(1);
            name.remove_prefix(FirstCharacterLength(name));
        } else if (!pattern.empty() && EqualIgnoringCase(name.substr(0, 1), pattern.substr(0, 1))) {
            pattern.remove_prefix(1);
            name.remove_prefix(1);
        } else if (starSeen) {  // let the last star take one character more
            retryName.remove_prefix(FirstCharacterLength(retryName));
            name = retryName;
            pattern = retryPattern;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*') == std::string_view::npos;
}

std::vector<std::string> FilesMatching(const FileSystem& files, const Path& folder, std::string_view pattern) {
    std::vector<std::string> names = files.FileNames(folder);
    const auto other = [pattern](const std::string& name) { return !MatchesPattern(name, pattern); };
    names.erase(std::remove_if(names.begin(), names.end(), other), names.end());
    return names;
}

std::string ReadTextFile(const FileSystem& files, const Path& path, std::uintmax_t limit) {
    const std::string bytes = files.ReadBytes(path, limit);
    try {
        return FromFileBytes(bytes);
    } catch (const EncodingError& error) {
        throw FileError(path, error.what());
    }
}

void ReplaceTextFile(FileSystem& files, const Path& path, std::string text) {
    try {
        ConvertToWindows1252(text);
    } catch (const EncodingError&) {
        text = WithoutUnstorable(text).text;
        ConvertToWindows1252(text);
    }
    files.ReplaceFile(path, text);
}

std::string PathText(const Path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

Path PathFromText(std::string_view text) {
    return Path(std::u8string(text.begin(), text.end()));
}

bool FileExists(const FileSystem& files, const Path& path) {
    return !FilesMatching(files, path.parent_path(), PathText(path.filename())).empty();
}

std::vector<std::string> ListSubFolders(const FileSystem& files, const Path& folder, std::string_view prefix) {
    auto names = files.FolderNames(folder);
    std::erase_if(names, [&](const std::string& name) { return !StartsWithIgnoringCase(name, prefix); });
    return names;
}

std::vector<std::string> ListFiles(const FileSystem& files, const Path& folder, std::string_view pattern) {
    return FilesMatching(files, folder, pattern);
}

std::vector<std::string> ListFilesWithPrefix(const FileSystem& files, const Path& folder, std::string_view prefix) {
    auto names = files.FileNames(folder);
    std::erase_if(names, [&](const std::string& name) { return !StartsWithIgnoringCase(name, prefix); });
    return names;
}

}  // namespace bellmark
