#pragma once

#include <functional>

class QMainWindow;
class QMenu;
class QWidget;

namespace bellmark {

class Screen;
class ScreenStack;

/// Puts the screens that can be looked at beside any other, such as the board's, into docks at the foot of the window
/// or into windows of their own, with an entry for each in the menu. mainFrame is not among them. pageOf: makes the
/// page of a screen; nullptr when it has no form.
void AddSideScreens(QMainWindow& window, QMenu& menu, const ScreenStack& screens, const Screen& mainFrame,
                    const std::function<QWidget*(Screen&)>& pageOf);

}  // namespace bellmark
