#include "analyse/file_walk.h"

#include <algorithm>
#include <cstring>
#include <system_error>

namespace bellmark {

namespace disk = std::filesystem;

namespace {

bool IsBelowOrSame(const Path& path, const Path& folder) {
    return std::mismatch(path.begin(), path.end(), folder.begin(), folder.end()).second == folder.end();
}

FoundPath Failed(const Path& path, const std::error_code& error) {
    return {path, error.message()};
}

}  // namespace

std::optional<FoundPath> FileWalk::Next() {
    for (;;) {
        if (levels_.empty()) {
            if (nextPlace_ == places_.size()) return {};
            const Path& place = places_[nextPlace_++];
            std::error_code error;
            if (!disk::is_directory(place, error)) return FoundPath{place, {}};
            if (auto problem = Enter(place)) return problem;
            continue;
        }
        Level& level = levels_.back();
        if (level.starts.empty()) {
            levels_.pop_back();
            continue;
        }
        const std::string_view name(level.names.data() + level.starts.back());
        level.starts.pop_back();
        if (auto found = Visit(level.path / PathFromText(name))) return found;
    }
}

std::optional<FoundPath> FileWalk::Visit(const Path& path) {
    std::error_code error;
    const disk::file_status status = disk::status(path, error);
    const bool isWanted = wanted_(PathText(path.filename()));
    if (disk::is_directory(status)) return Enter(path);
    if (isWanted) return FoundPath{path, {}};
    ++passedOver_;
    return {};
}

bool FileWalk::LeadsBack(const Path& actual) const {
    return std::any_of(levels_.begin(), levels_.end(),
                       [&](const Level& level) { return IsBelowOrSame(level.actual, actual); });
}

std::optional<FoundPath> FileWalk::Enter(const Path& folder) {
    std::error_code error;
    Level level;
    level.path = folder;
    level.actual = disk::canonical(folder, error);
    if (error) return Failed(folder, error);
    if (LeadsBack(level.actual)) return FoundPath{folder, "is a link back to a folder above it"};
    for (disk::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        level.starts.push_back(static_cast<std::uint32_t>(level.names.size()));
        (level.names += PathText(entry->path().filename())) += '\0';
    }
    if (error) return Failed(folder, error);
    const char* names = level.names.data();
    std::sort(level.starts.begin(), level.starts.end(),
              [names](std::uint32_t a, std::uint32_t b) { return std::strcmp(names + a, names + b) > 0; });
    levels_.push_back(std::move(level));
    return {};
}

}  // namespace bellmark
