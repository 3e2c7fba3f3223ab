#include "screens/timer_driver.h"

#include <QApplication>
#include <QEventLoop>
#include <algorithm>
#include <chrono>

#include "platform/clock.h"
#include "platform/timers.h"

namespace bellmark {

namespace {
constexpr std::chrono::milliseconds behindBox{50};
constexpr int longestTurn = 10;  // ms of events before the waiting program checks again
}  // namespace

TimerDriver::TimerDriver(Timers& timers, const Clock& clock) : timers_(timers), clock_(clock) {
    alarm_.setSingleShot(true);
    alarm_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&alarm_, &QTimer::timeout, &alarm_, [this] { RunDue(); });
    timers_.Changed = [this] { SetAlarm(); };
    SetAlarm();
}

TimerDriver::~TimerDriver() {
    timers_.Changed = nullptr;
}

void TimerDriver::SetAlarm() {
    const auto next = timers_.NextDue();
    if (!next) {
        alarm_.stop();
        return;
    }
    alarm_.start(std::max(*next - clock_.Elapsed(), std::chrono::milliseconds(0)));
}

void TimerDriver::RunDue() {
    if (QApplication::activeModalWidget()) {
        alarm_.start(behindBox);
        return;
    }
    timers_.RunDue();
}

void TimerDriver::Yield() {
    QCoreApplication::processEvents(QEventLoop::AllEvents, longestTurn);
    RunDue();
}

}  // namespace bellmark
