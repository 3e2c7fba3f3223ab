#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/files.h"

namespace bellmark {

/// A file found, or a place that could not be walked.
struct FoundPath {
    Path path;
    std::string problem;  ///< empty for a file to be read
};

/// Finds files below folders one by one, in the order of the folders given and of the bytes of the names in each. Links
/// are followed; one that leads back to a folder above it is told. Holds the names of the folders on the way down
/// alone.
class FileWalk {
  public:
    using Wanted = std::function<bool(std::string_view name)>;

    /// places: folders, and files, which are found whatever their names. wanted: for the names of files in folders.
    FileWalk(std::vector<Path> places, Wanted wanted) : places_(std::move(places)), wanted_(std::move(wanted)) {}

    /// Nothing at the end.
    std::optional<FoundPath> Next();

    /// Files in the folders that were not wanted.
    long long PassedOver() const { return passedOver_; }

  private:
    /// A folder on the way down, with the names in it that were not visited yet.
    struct Level {
        Path path;
        Path actual;                        ///< without links
        std::string names;                  ///< one behind the other, each with a zero byte
        std::vector<std::uint32_t> starts;  ///< of the names, the next one last
    };

    std::optional<FoundPath> Enter(const Path& folder);
    std::optional<FoundPath> Visit(const Path& path);
    bool LeadsBack(const Path& actual) const;

    std::vector<Path> places_;
    std::size_t nextPlace_ = 0;
    Wanted wanted_;
    std::vector<Level> levels_;
    long long passedOver_ = 0;
};

}  // namespace bellmark
