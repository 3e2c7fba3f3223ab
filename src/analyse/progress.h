#pragma once

#include <chrono>
#include <string>

namespace bellmark {

/// A line that tells how far a long work is and how long it will still take.
class ProgressLine {
  public:
    using Clock = std::chrono::steady_clock;

    /// total: of the items; 0 when it is not known.
    ProgressLine(long long total, Clock::time_point begin) : total_(total), begin_(begin), last_(begin) {}

    /// The line to be shown after one more item, in place of the last one; empty when it is too early for another.
    std::string After(long long done, Clock::time_point now);

    /// Blanks in place of the line shown last.
    std::string Cleared() const;

  private:
    long long total_;
    Clock::time_point begin_;
    Clock::time_point last_;
    std::size_t width_ = 0;
};

}  // namespace bellmark
