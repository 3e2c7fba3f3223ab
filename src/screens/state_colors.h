#pragma once

#include <QColor>
#include <QString>

#include "controls/color.h"

class QWidget;

namespace bellmark {

inline QColor ToQColor(Color color) {
    return {color.red, color.green, color.blue};
}

/// Text on a state's colour, in the light look as in the dark one.
constexpr QColor stateTextColor(0x10, 0x18, 0x20);

/// A colour without a state: the widget keeps its own look.
inline bool IsPlain(Color color) {
    return color == colors::window || color == colors::buttonFace;
}

/// The meaning of the colour, in words.
QString StateText(Color color);

/// Fills the widget with the colour; a plain colour removes the fill.
void ShowBackColor(QWidget& widget, Color color);

}  // namespace bellmark
