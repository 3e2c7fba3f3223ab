#pragma once

namespace bellmark {

class Button;
class Control;
class Screen;

/// The button of the next step: the screen's default button; without one the button in the colour of the suggestion, or
/// the one that the screen gave the keyboard. Null when it cannot be pressed now.
Button* SuggestedButton(const Screen& screen);

/// The button that Enter presses while the given control has the keyboard; null for none of the screen's. A button that
/// has the keyboard is pressed itself. In a list Enter chooses the row and presses nothing. Everywhere else it takes
/// the suggested step.
Button* ButtonOfEnter(const Screen& screen, Control* hasKeyboard);

}  // namespace bellmark
