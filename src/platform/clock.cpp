#include "platform/clock.h"

#include <ctime>

namespace bellmark {

using std::chrono::duration_cast;
using std::chrono::milliseconds;

DateTime SystemClock::Now() const {
    const auto now = std::chrono::system_clock::now();
    const std::time_t seconds = std::chrono::system_clock::to_time_t(now);
    std::tm parts{};
#ifdef _WIN32
    localtime_s(&parts, &seconds);
#else
    localtime_r(&seconds, &parts);
#endif
    const auto fraction = duration_cast<milliseconds>(now - std::chrono::floor<std::chrono::seconds>(now));
    return MakeDateTime(parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday, parts.tm_hour, parts.tm_min,
                        parts.tm_sec) +
           fraction;
}

milliseconds SystemClock::Elapsed() const {
    return duration_cast<milliseconds>(std::chrono::steady_clock::now().time_since_epoch());
}

DateTime ScriptClock::Now() const {
    return stopped_ ? now_ : system_.Now();
}

milliseconds ScriptClock::Elapsed() const {
    return stopped_ ? elapsed_ : system_.Elapsed();
}

void ScriptClock::Set(DateTime now) {
    Stop();
    now_ = now;
}

void ScriptClock::Advance(milliseconds step) {
    Stop();
    now_ += step;
    elapsed_ += step;
}

void ScriptClock::Stop() {
    if (stopped_) return;
    now_ = system_.Now();
    elapsed_ = system_.Elapsed();
    stopped_ = true;
}

}  // namespace bellmark
