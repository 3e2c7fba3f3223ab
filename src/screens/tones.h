#pragma once

#include <QColor>
#include <QString>
#include <span>

namespace bellmark {

/// A colour of the program's look, named by its use.
struct Tone {
    const char* name;
    QRgb light;
    QRgb dark;
};

/// All tones. A style sheet names them with "@" in front.
std::span<const Tone> Tones();

/// Throws std::logic_error for a name that is not in the list.
QColor ToneColor(const QString& name, bool isDark);

/// The style sheet with colours in place of the tones' names. Throws std::logic_error for an unknown name.
QString WithTones(const QString& sheet, bool isDark);

/// How well two colours can be told apart, 1 to 21 (WCAG 2.1, contrast ratio). Text needs 4.5.
double Contrast(const QColor& one, const QColor& other);

}  // namespace bellmark
