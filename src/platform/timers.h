#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <map>
#include <optional>

namespace bellmark {

class Clock;

/// Repeating timers on the one thread of the program. The front end calls RunDue when NextDue has come.
class Timers {
  public:
    using Id = std::size_t;

    explicit Timers(const Clock& clock) : clock_(clock) {}

    /// Calls the action each interval from now on. An interval of 0 is taken as 1 ms.
    Id Start(std::chrono::milliseconds interval, std::function<void()> action);
    void Stop(Id id);

    /// Runs every timer that is due, once, the longest due first. An action may start and stop timers, and may lead
    /// back into RunDue: a timer whose action is still running is not run again.
    void RunDue();

    /// Moment, on the clock's Elapsed count, of the next timer; nothing while none runs.
    std::optional<std::chrono::milliseconds> NextDue() const;

    std::function<void()> Changed;  ///< called after each start, stop and run, so that a front end can set its alarm

  private:
    struct Timer {
        std::chrono::milliseconds interval;
        std::chrono::milliseconds due;
        std::function<void()> action;
        bool running = false;
    };

    void TellChanged() const;

    const Clock& clock_;
    std::map<Id, Timer> timers_;
    Id nextId_ = 1;
};

}  // namespace bellmark
