#include "controls/enter_key.h"

#include <algorithm>

#include "controls/controls.h"
#include "controls/screen.h"

namespace bellmark {

namespace {

/// The button back to the main menu: not a next step, even when it has the keyboard.
bool IsWayBack(const Control* control) {
    return control && control->Name() == "cmdMainMenu";
}

bool IsSuggested(const Control* control) {
    return dynamic_cast<const Button*>(control) && control->BackColor.Get() == colors::suggestedNext &&
           control->IsReachable();
}

Button* ReachableButton(Control* control) {
    return control && control->IsReachable() ? dynamic_cast<Button*>(control) : nullptr;
}

/// button: the member of Frame that names the button.
Button* ButtonOfFrames(const Control* control, Button* Frame::*button) {
    for (const Frame* frame = control ? control->LiesIn() : nullptr; frame; frame = frame->LiesIn()) {
        if (Button* reachable = ReachableButton(frame->*button)) return reachable;
    }
    return nullptr;
}

}  // namespace

Button* SuggestedButton(const Screen& screen, const Control* hasKeyboard) {
    if (Button* button = ButtonOfFrames(hasKeyboard, &Frame::DefaultButton)) return button;
    if (Button* button = screen.DefaultButton()) return ReachableButton(button);
    const auto& controls = screen.Controls();
    const auto suggested = std::find_if(controls.begin(), controls.end(), IsSuggested);
    if (suggested != controls.end()) return ReachableButton(*suggested);
    return IsWayBack(screen.Focus()) ? nullptr : ReachableButton(screen.Focus());
}

Button* ButtonOfEnter(const Screen& screen, Control* hasKeyboard) {
    if (dynamic_cast<Grid*>(hasKeyboard) && hasKeyboard->IsReachable()) return nullptr;
    if (Button* button = ReachableButton(hasKeyboard)) return button;
    return SuggestedButton(screen, hasKeyboard);
}

Button* ButtonOfEscape(const Control* hasKeyboard) {
    return ButtonOfFrames(hasKeyboard, &Frame::CancelButton);
}

}  // namespace bellmark
