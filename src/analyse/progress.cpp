#include "analyse/progress.h"

#include <algorithm>
#include <utility>

#include "platform/numbers.h"

namespace bellmark {

std::string ProgressLine::After(long long done, Clock::time_point now) {
    constexpr std::chrono::milliseconds pause(250);
    if (now - last_ < pause) return {};
    last_ = now;
    const double seconds = std::chrono::duration<double>(now - begin_).count();
    const double perSecond = static_cast<double>(done) / seconds;
    std::string line = NumberText(done);
    if (total_ > 0) line += " of " + NumberText(total_);
    line += ", " + NumberText(RoundToWhole(perSecond)) + " a second";
    if (total_ > done && perSecond > 0) {
        line += ", " + NumberText(RoundToWhole(static_cast<double>(total_ - done) / perSecond)) + " s left";
    }
    // A shorter line must cover a longer one.
    const std::size_t width = std::exchange(width_, line.size());
    line.resize(std::max(width, line.size()), ' ');
    return '\r' + line;
}

std::string ProgressLine::Cleared() const {
    return width_ == 0 ? std::string() : '\r' + std::string(width_, ' ') + '\r';
}

}  // namespace bellmark
