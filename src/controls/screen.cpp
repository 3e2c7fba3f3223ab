#include "controls/screen.h"

#include <stdexcept>

#include "controls/control.h"
#include "controls/screen_stack.h"
#include "platform/text.h"

namespace bellmark {

Screen::Screen(ScreenStack& stack, std::string name, std::string title)
    : stack_(stack), name_(std::move(name)), title_(std::move(title)) {
    stack_.Add(*this);
}

Screen::~Screen() {
    stack_.Remove(*this);
}

void Screen::Register(Control& control) {
    if (Find(control.Name())) throw std::logic_error(control.FullName() + " exists twice");
    controls_.push_back(&control);
}

Control* Screen::Find(std::string_view name) const {
    for (Control* control : controls_) {
        if (EqualIgnoringCase(control->Name(), name)) return control;
    }
    return nullptr;
}

void Screen::Show() {
    stack_.Show(*this);
}
void Screen::Hide() {
    stack_.Hide(*this);
}
bool Screen::IsShown() const {
    return stack_.IsShown(*this);
}

void Screen::SetBackColor(Color color) {
    if (backColor_ == color) return;
    backColor_ = color;
    TellChanged();
}

void Screen::SetFocus(Control& control) {
    focus_ = &control;
    ++focusRequests_;
    TellChanged();
}

void Screen::SetDefaultButton(Button* button) {
    defaultButton_ = button;
    TellChanged();
}

void Screen::TellChanged() const {
    if (Changed) Changed();
}

}  // namespace bellmark
