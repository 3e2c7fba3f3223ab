#pragma once

class QMenu;

namespace bellmark {

class Look;
class Preferences;

/// Fills the menu with the choices of the look: as the desktop has it, light or dark. A choice takes effect at once and
/// is kept. Look and preferences must outlive the menu.
void FillViewMenu(QMenu& menu, Look& look, Preferences& preferences);

}  // namespace bellmark
