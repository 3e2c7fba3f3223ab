#pragma once

class QMenu;

namespace bellmark {

class Look;
class Preferences;
class Sounds;

/// Fills the menu with the choices of the look, as the desktop has it, light or dark, and the switch of the sounds. A
/// choice takes effect at once and is kept. Look, sounds and preferences must outlive the menu.
void FillViewMenu(QMenu& menu, Look& look, Sounds& sounds, Preferences& preferences);

}  // namespace bellmark
