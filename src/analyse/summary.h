#pragma once

#include <map>
#include <string>
#include <vector>

namespace bellmark {

struct DropResult;

/// What the drops of an archive have in common, in a few lines.
class ArchiveSummary {
  public:
    void Add(const DropResult& drop);

    /// Files that could not be used.
    long long Unusable() const { return unusable_; }

    /// Numbers of drops, of each flag and of the files passed over, and the largest differences from the peaks in the
    /// files.
    std::string Text(long long passedOver) const;

  private:
    struct Change {
        double fraction = 0;  ///< of the peak in the file
        std::string line;
    };

    long long loads_ = 0;
    long long deflections_ = 0;
    long long unusable_ = 0;
    long long changed_ = 0;
    std::map<std::string, long long> flags_;
    std::vector<Change> largest_;  ///< the largest first
};

}  // namespace bellmark
