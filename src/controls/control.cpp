#include "controls/control.h"

#include "controls/controls.h"
#include "controls/screen.h"
#include "controls/screen_stack.h"

namespace bellmark {

Place::Place(const Frame& frame) : screen_(&frame.Owner()), frame_(&frame) {}

Control::Control(Place place, std::string name) : place_(place), name_(std::move(name)) {
    Owner().Register(*this);
}

std::string Control::FullName() const {
    return Owner().Name() + '.' + name_;
}

bool Control::IsReachable() const {
    return Enabled && Visible && (!LiesIn() || LiesIn()->IsReachable());
}

void Control::RequireReachable() const {
    if (Owner().Stack().IsLockedFor(*this)) throw UserError(FullName() + " is locked: the program waits");
    if (IsReachable()) return;
    throw UserError(FullName() + (Visible && (!LiesIn() || LiesIn()->Visible) ? " is disabled" : " is hidden"));
}

void Control::Raise(const char* event, const std::function<void()>& handler) const {
    if (handler) Owner().Stack().Dispatch(FullName() + '.' + event, handler);
}

void Control::UserClick() {
    RequireReachable();
    BeforeClick();
    Raise("Click", Click);
}

void SetVisible(std::initializer_list<Control*> controls, bool visible) {
    for (Control* control : controls) control->Visible = visible;
}

void SetEnabled(std::initializer_list<Control*> controls, bool enabled) {
    for (Control* control : controls) control->Enabled = enabled;
}

}  // namespace bellmark
