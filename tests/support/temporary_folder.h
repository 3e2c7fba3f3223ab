#pragma once

#include <filesystem>
#include <random>

#include "platform/files.h"
#include "platform/numbers.h"

namespace bellmark {

/// A new empty folder, removed with its contents at the end of the test.
class TemporaryFolder {
  public:
    TemporaryFolder() {
        std::random_device random;
        do {
            path_ = std::filesystem::temp_directory_path() / ("bellmark-test-" + NumberText(std::size_t{random()}));
        } while (!std::filesystem::create_directory(path_));
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    Path operator/(const Path& name) const { return path_ / name; }
    const Path& Folder() const { return path_; }

  private:
    Path path_;
};

}  // namespace bellmark
