#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "controls/color.h"

namespace bellmark {

class Button;
class Control;
class ScreenStack;
class Timers;

/// A screen of the program: owns its controls as members, which register here under their names.
class Screen {
  public:
    Screen(ScreenStack& stack, std::string name, std::string title);
    virtual ~Screen();
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;

    const std::string& Name() const { return name_; }
    const std::string& Title() const { return title_; }
    ScreenStack& Stack() const { return stack_; }

    const std::vector<Control*>& Controls() const { return controls_; }
    Control* Find(std::string_view name) const;  ///< nullptr when there is none; names compare without case

    void Show();  ///< brings it to the front
    void Hide();
    bool IsShown() const;

    /// Colour of the screen itself: it says from afar what the operator may do.
    Color BackColor() const { return backColor_; }
    void SetBackColor(Color color);

    /// The control that the keyboard goes to, and the button of the next step: see enter_key.h.
    void SetFocus(Control& control);
    Control* Focus() const { return focus_; }
    int FocusRequests() const { return focusRequests_; }  ///< also rises when the same control is requested again
    void SetDefaultButton(Button* button);
    Button* DefaultButton() const { return defaultButton_; }

    /// True for the frame around all screens, whose menus can be used whatever screen is in front.
    virtual bool IsAlwaysAtHand() const { return false; }

    /// Page of the help for what the screen shows now; 0 for the contents.
    virtual int HelpContext() const { return 0; }

    /// The screen has come to the front.
    virtual void Activated() {}
    /// Another screen has come to the front, or this one was hidden.
    virtual void Left() {}
    /// The close box of the window, which the main frame answers.
    virtual void CloseRequested() {}
    /// A click outside all controls.
    virtual void Clicked() {}

    std::function<void()> Changed;  ///< the view's: colour, focus or default button changed
    void TellChanged() const;

  private:
    friend class Control;
    void Register(Control& control);

    ScreenStack& stack_;
    std::string name_;
    std::string title_;
    std::vector<Control*> controls_;
    Color backColor_ = colors::buttonFace;
    Control* focus_ = nullptr;
    int focusRequests_ = 0;
    Button* defaultButton_ = nullptr;
};

}  // namespace bellmark
