#pragma once

#include <functional>
#include <initializer_list>
#include <stdexcept>
#include <string>
#include <utility>

#include "controls/color.h"

/// Controls without a toolkit. The control holds the state; a front end shows it and passes on what the user does. The
/// program changes a control by assigning a property, which notifies the view only. The User... functions are the user
/// acting and notify the logic.
namespace bellmark {

class Control;
class Frame;
class Screen;

/// The user tried what the screen does not allow: the control is disabled, hidden or locked.
class UserError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// A value of a control that the program sets and the view shows.
template <class Value>
class Property {
  public:
    Property(Control& owner, Value value) : owner_(owner), value_(std::move(value)) {}
    Property(const Property&) = delete;

    Property& operator=(Value value);
    Property& operator=(const Property& other) { return *this = other.value_; }
    operator const Value&() const { return value_; }
    const Value& Get() const { return value_; }

  private:
    Control& owner_;
    Value value_;
};

/// The place of a control: on the screen itself or in one of its frames.
///
///     Frame fraStart{*this, "fraStart"};
///     Button cmdStart{fraStart, "cmdStart", "&Start"};
class Place {
  public:
    Place(Screen& screen) : screen_(&screen) {}
    Place(const Frame& frame);

  private:
    friend class Control;
    Screen* screen_;
    const Frame* frame_ = nullptr;
};

class Control {
  public:
    /// Registers itself with the screen under the name; control arrays under "lblZeroCalc(0)".
    Control(Place place, std::string name);
    virtual ~Control() = default;
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    const std::string& Name() const { return name_; }
    std::string FullName() const;  ///< "frmMainMenu.cmdQuit"
    Screen& Owner() const { return *place_.screen_; }

    /// What the user reads on it.
    virtual std::string DisplayText() const = 0;

    Property<bool> Enabled{*this, true};
    Property<bool> Visible{*this, true};
    Property<Color> BackColor{*this, colors::window};
    Property<std::string> ToolTip{*this, {}};

    /// The frame around it, which hides and disables it. Null for a control directly on the screen.
    const Frame* LiesIn() const { return place_.frame_; }
    bool IsReachable() const;  ///< visible and enabled, and so is every frame around it

    std::function<void()> Click;
    void UserClick();  ///< throws UserError when it is not reachable

    std::function<void()> Changed;  ///< the view's: some property has a new value
    void TellChanged() const {
        if (Changed) Changed();
    }

  protected:
    void RequireReachable() const;
    void Raise(const char* event, const std::function<void()>& handler) const;
    virtual void BeforeClick() {}

  private:
    Place place_;
    std::string name_;
};

template <class Value>
Property<Value>& Property<Value>::operator=(Value value) {
    if (value_ == value) return *this;
    value_ = std::move(value);
    owner_.TellChanged();
    return *this;
}

/// Shows or hides, enables or disables several controls at once.
void SetVisible(std::initializer_list<Control*> controls, bool visible);
void SetEnabled(std::initializer_list<Control*> controls, bool enabled);

}  // namespace bellmark
