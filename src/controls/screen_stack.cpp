#include "controls/screen_stack.h"

#include <algorithm>
#include <exception>

#include "controls/controls.h"
#include "controls/screen.h"
#include "platform/text.h"

namespace bellmark {

Screen* ScreenStack::Find(std::string_view name) const {
    for (Screen* screen : screens_) {
        if (EqualIgnoringCase(screen->Name(), name)) return screen;
    }
    return nullptr;
}

bool ScreenStack::IsShown(const Screen& screen) const {
    return std::find(shown_.begin(), shown_.end(), &screen) != shown_.end();
}

void ScreenStack::Show(Screen& screen) {
    Screen* before = Front();
    std::erase(shown_, &screen);
    shown_.push_back(&screen);
    TellFrontChanged(before);
}

void ScreenStack::Hide(Screen& screen) {
    Screen* before = Front();
    std::erase(shown_, &screen);
    TellFrontChanged(before);
}

void ScreenStack::TellFrontChanged(Screen* before) {
    if (Front() == before) return;
    if (before) Dispatch(before->Name() + ".Left", [before] { before->Left(); });
    if (FrontChanged) FrontChanged();
    if (Screen* front = Front()) Dispatch(front->Name() + ".Activate", [front] { front->Activated(); });
}

void ScreenStack::LockAllBut(const Frame* frame) {
    unlocked_ = frame;
    if (LockChanged) LockChanged();
}

bool ScreenStack::IsLockedFor(const Control& control) const {
    if (!unlocked_) return false;
    const Frame* frame = control.LiesIn();
    while (frame && frame != unlocked_) frame = frame->LiesIn();
    return !frame;
}

void ScreenStack::Dispatch(const std::string& what, const std::function<void()>& handler) const {
    try {
        handler();
    } catch (const std::exception& error) {
        if (!HandleFailure) throw;
        HandleFailure(what, error.what());
    }
}

void ScreenStack::Add(Screen& screen) {
    screens_.push_back(&screen);
}

void ScreenStack::Remove(Screen& screen) {
    std::erase(screens_, &screen);
    std::erase(shown_, &screen);
}

}  // namespace bellmark
