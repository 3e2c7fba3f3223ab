#pragma once

#include <QString>
#include <array>
#include <cstddef>
#include <optional>

#include "controls/picture.h"

class QCPAbstractItem;
class QCustomPlot;

namespace bellmark {

struct PlotColors;

/// A sample of a series of a plot.
struct PlotSample {
    std::size_t series = 0;
    std::size_t index = 0;
    friend bool operator==(const PlotSample&, const PlotSample&) = default;
};

/// A value with the unit that the caption of its axis tells: "12.4 mSec" for "Time (mSec)", "5.2 volts" for "volts". A
/// caption that begins with a capital and has no unit names the value: "Gain 1.002".
QString PlotValueText(const PlotAxis& axis, double value);

/// Two cursors that stay where the operator set them, A and B, and the difference between them.
class PlotCursors {
  public:
    /// A new plot: a cursor goes to the sample nearest to its place on the same series, or away with an empty plot.
    void Follow(const Plot& plot);

    void Set(std::size_t cursor, const PlotSample& sample, const Plot& plot);
    /// The next sample of its series, or the one before it. Nothing without the cursor.
    void Step(std::size_t cursor, int samples, const Plot& plot);
    void Clear() { cursors_ = {}; }

    /// A line for each cursor, and one for B - A in both directions; empty without a cursor.
    QString Text(const Plot& plot) const;

    /// Adds lines, names and text to a view from which all items were removed.
    void Draw(QCustomPlot& view, const Plot& plot, const PlotColors& colors) const;

  private:
    struct Cursor {
        PlotSample sample;
        double x = 0;
    };
    std::array<std::optional<Cursor>, 2> cursors_;
};

}  // namespace bellmark
