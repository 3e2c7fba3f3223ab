#pragma once

#include <chrono>

#include "platform/date_time.h"

namespace bellmark {

/// The two times that the program needs: what the wall clock shows, and a count that never goes backwards.
class Clock {
  public:
    virtual ~Clock() = default;
    virtual DateTime Now() const = 0;
    virtual std::chrono::milliseconds Elapsed() const = 0;  ///< since some fixed moment; paces the timers
};

class SystemClock : public Clock {
  public:
    DateTime Now() const override;
    std::chrono::milliseconds Elapsed() const override;
};

/// Runs with the wall clock until it is first set; from then on it stands still until it is set or advanced.
class ScriptClock : public Clock {
  public:
    DateTime Now() const override;
    std::chrono::milliseconds Elapsed() const override;
    void Set(DateTime now);
    void Advance(std::chrono::milliseconds step);  ///< stops the clock first when it is running

  private:
    void Stop();

    SystemClock system_;
    bool stopped_ = false;
    DateTime now_;
    std::chrono::milliseconds elapsed_{};
};

}  // namespace bellmark
