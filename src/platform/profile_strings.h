#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace bellmark {

class FileSystem;

/// The profile-string service as an image of one file: parsed once, read and changed many times, written once. Text
/// returns, byte for byte, what the same changes made key by key on the file would have left.
class ProfileStrings {
  public:
    ProfileStrings();
    explicit ProfileStrings(std::string_view text);  ///< text of a file, UTF-8, any line ends
    ~ProfileStrings();
    ProfileStrings(ProfileStrings&&) noexcept;
    ProfileStrings& operator=(ProfileStrings&&) noexcept;

    /// The value of the first key of that name in the first section of that name, cut to size - 1 characters; the
    /// default, cut alike and without trailing blanks, when there is none. Names compare without case.
    std::string Get(std::string_view section, std::string_view key, std::string_view defaultText = {},
                    std::size_t size = 1000) const;
    bool HasSection(std::string_view section) const;
    std::vector<std::string> SectionNames() const;  ///< in lower case, in no order
    /// Header, keys and comments of the section as they stand, up to the next header; empty when it is not there.
    std::string SectionText(std::string_view section) const;

    /// Replaces the first matching line, or adds one after the section's last key.
    void Set(std::string_view section, std::string_view key, std::string_view value);
    void RemoveKey(std::string_view section, std::string_view key);
    void RemoveSection(std::string_view section);  ///< its header and keys; comments stay

    std::string Text() const;

  private:
    struct Image;
    std::unique_ptr<Image> image_;
};

/// The service on a file. A file that cannot be read answers with defaults, as the service does; IsFile of the file
/// system shows whether the file exists.
ProfileStrings OpenProfileStrings(const FileSystem& files, const std::filesystem::path& path);

/// Replaces the file by the image. Throws FileError when the folder is missing or the file cannot be written; the old
/// file stays as it was.
void SaveProfileStrings(FileSystem& files, const std::filesystem::path& path, const ProfileStrings& strings);

}  // namespace bellmark
