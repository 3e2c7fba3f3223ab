#pragma once

namespace bellmark {

class Button;
class Control;
class Screen;

/// The button of the next step while the given control has the keyboard: that of the innermost frame around it that has
/// one of its own. Else the screen's default button; without one the button in the colour of the suggestion, or the one
/// that the screen gave the keyboard. Null when it cannot be pressed now.
Button* SuggestedButton(const Screen& screen, const Control* hasKeyboard);

/// The button that Enter presses while the given control has the keyboard; null when Enter presses none. A button that
/// has the keyboard is pressed itself. In a list Enter chooses the row and presses nothing. Everywhere else Enter takes
/// the suggested step.
Button* ButtonOfEnter(const Screen& screen, Control* hasKeyboard);

/// The button that leaves the innermost frame around the keyboard; null outside such frames.
Button* ButtonOfEscape(const Control* hasKeyboard);

}  // namespace bellmark
