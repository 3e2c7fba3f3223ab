#include "platform/timers.h"

#include <algorithm>
#include <utility>

#include "platform/clock.h"

namespace bellmark {

using std::chrono::milliseconds;

Timers::Id Timers::Start(milliseconds interval, std::function<void()> action) {
    interval = std::max(interval, milliseconds(1));
    const Id id = nextId_++;
    timers_.emplace(id, Timer{interval, clock_.Elapsed() + interval, std::move(action)});
    TellChanged();
    return id;
}

void Timers::Stop(Id id) {
    timers_.erase(id);
    TellChanged();
}

void Timers::RunDue() {
    const milliseconds now = clock_.Elapsed();
    for (;;) {
        auto next = timers_.end();
        for (auto timer = timers_.begin(); timer != timers_.end(); ++timer) {
            const bool due = !timer->second.running && timer->second.due <= now;
            if (due && (next == timers_.end() || timer->second.due < next->second.due)) next = timer;
        }
        if (next == timers_.end()) break;
        const Id id = next->first;
        const auto action = next->second.action;
        next->second.running = true;
        // Missed ticks are not repeated: a late poll is one poll.
        next->second.due = now + next->second.interval;
        const auto finished = [&] {
            if (const auto timer = timers_.find(id); timer != timers_.end()) timer->second.running = false;
        };
        try {
            action();
        } catch (...) {
            finished();
            throw;
        }
        finished();
    }
    TellChanged();
}

std::optional<milliseconds> Timers::NextDue() const {
    std::optional<milliseconds> next;
    for (const auto& [id, timer] : timers_) {
        if (!timer.running && (!next || timer.due < *next)) next = timer.due;
    }
    return next;
}

void Timers::TellChanged() const {
    if (Changed) Changed();
}

}  // namespace bellmark
