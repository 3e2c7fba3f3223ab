#pragma once

#include <QTimer>

namespace bellmark {

class Clock;
class Timers;

/// Runs the program's timers from Qt's event loop. They pause while a box waits for an answer: a press of the hand
/// button, which they poll, must not reach a button behind the box.
class TimerDriver {
  public:
    TimerDriver(Timers& timers, const Clock& clock);
    ~TimerDriver();
    TimerDriver(const TimerDriver&) = delete;
    TimerDriver& operator=(const TimerDriver&) = delete;

    /// One turn of waiting: pending events, then the timers that are due.
    void Yield();

  private:
    void SetAlarm();
    void RunDue();

    Timers& timers_;
    const Clock& clock_;
    QTimer alarm_;
};

}  // namespace bellmark
