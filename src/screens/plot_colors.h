#pragma once

#include <QColor>
#include <QPalette>

namespace bellmark {

/// The colours of a plot on a light or dark background.
struct PlotColors {
    QColor background;
    QColor ink;
    bool isDark;
    QColor grid;
    QColor axis;    ///< of the zero lines and the borders of blocks
    QColor mark;    ///< of the points that the program marks
    QColor cursor;  ///< of the cursors that the operator sets

    explicit PlotColors(const QPalette& palette)
        : background(palette.color(QPalette::Base)),
          ink(palette.color(QPalette::WindowText)),
          isDark(background.lightness() < ink.lightness()),
          grid(palette.color(QPalette::Mid)),
          axis(isDark ? grid.lighter(150) : grid.darker(125)),
          mark(isDark ? 0xff9080 : 0xb03a2e),
          cursor(isDark ? 0x6fd097 : 0x1d6b3c) {}
};

inline QColor Translucent(QColor color, int alpha) {
    color.setAlpha(alpha);
    return color;
}

}  // namespace bellmark
