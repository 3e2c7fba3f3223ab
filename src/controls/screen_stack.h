#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace bellmark {

class Control;
class Frame;
class Screen;
class Timers;

/// All screens of one program and which of them are shown, the last shown in front. All user actions and timer ticks
/// enter the logic here.
class ScreenStack {
  public:
    explicit ScreenStack(Timers& timers) : timers_(timers) {}

    Timers& TimerService() const { return timers_; }
    const std::vector<Screen*>& Screens() const { return screens_; }
    Screen* Find(std::string_view name) const;  ///< nullptr when there is none yet; names compare without case

    Screen* Front() const { return shown_.empty() ? nullptr : shown_.back(); }
    bool IsShown(const Screen& screen) const;
    void Show(Screen& screen);
    void Hide(Screen& screen);

    /// Runs a handler. An exception from it goes to HandleFailure with what the operator was doing, and stops there.
    void Dispatch(const std::string& what, const std::function<void()>& handler) const;

    /// While the program waits for something outside, only the controls in this frame can be used; nullptr ends that.
    void LockAllBut(const Frame* frame);
    bool IsLocked() const { return unlocked_ != nullptr; }
    bool IsLockedFor(const Control& control) const;

    std::function<void(const std::string& what, const std::string& why)> HandleFailure;
    std::function<void()> LockChanged;  ///< the front end's
    std::function<void()>
        FrontChanged;  ///< the front end's: it builds a screen's view when that first comes to the front

  private:
    friend class Screen;
    void Add(Screen& screen);
    void Remove(Screen& screen);
    void TellFrontChanged(Screen* before);

    Timers& timers_;
    std::vector<Screen*> screens_;
    std::vector<Screen*> shown_;
    const Frame* unlocked_ = nullptr;
};

}  // namespace bellmark
