#include "controls/control.h"

#include "controls/controls.h"
#include "controls/screen.h"
#include "controls/screen_stack.h"

namespace bellmark {

Control::Control(Screen& screen, std::string name) : screen_(screen), name_(std::move(name)) {
    screen.Register(*this);
}

std::string Control::FullName() const {
    return screen_.Name() + '.' + name_;
}

bool Control::IsReachable() const {
    return Enabled && Visible && (!frame_ || frame_->IsReachable());
}

void Control::RequireReachable() const {
    if (screen_.Stack().IsLockedFor(*this)) throw UserError(FullName() + " is locked: the program waits");
    if (IsReachable()) return;
    throw UserError(FullName() + (Visible && (!frame_ || frame_->Visible) ? " is disabled" : " is hidden"));
}

void Control::Raise(const char* event, const std::function<void()>& handler) const {
    if (handler) screen_.Stack().Dispatch(FullName() + '.' + event, handler);
}

void Control::UserClick() {
    RequireReachable();
    BeforeClick();
    Raise("Click", Click);
}

}  // namespace bellmark
