#include "screens/state_colors.h"

#include <QWidget>

namespace bellmark {

QString StateText(Color color) {
    const auto words = StateWords(color);
    return QString::fromUtf8(words.data(), static_cast<qsizetype>(words.size()));
}

void ShowBackColor(QWidget& widget, Color color) {
    const QString rule = IsPlain(color) ? QString()
                                        : QString::fromLatin1("background-color: %1; color: %2;")
                                              .arg(ToQColor(color).name(), stateTextColor.name());
    // Setting a style sheet is slow, and most refreshes change something else.
    if (widget.styleSheet() != rule) widget.setStyleSheet(rule);
}

}  // namespace bellmark
