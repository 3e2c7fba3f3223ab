#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "controls/control.h"

namespace bellmark {

/// A section of an axis for one item: its limits and, where one is to be drawn, the mean of the values in it.
struct PlotBlock {
    std::string caption;
    double from = 0;
    double to = 0;
    std::optional<double> mean{};
};

/// What a plot is to show; how it is drawn is the front end's. Values are in the unit of the axis caption.
struct PlotAxis {
    std::string caption;
    double lowest = 0;
    double highest = 1;
    std::optional<double> tickStep;   ///< starts at the lowest value; without it the front end chooses
    int decimals = 0;                 ///< of the tick numbers, when there is a tick step
    std::vector<PlotBlock> blocks{};  ///< shown instead of the numbers when not empty
};

/// Shapes that can be told apart without colour.
enum class MarkerShape {
    Disc,
    Square,
    Triangle,
    Diamond,
    Cross,
    Circle,
    Plus,
    TriangleDown,
    Star,
    CrossedSquare,
    CrossedDisc,
    PlusSquare
};
inline constexpr std::array markerShapes{
    MarkerShape::Disc,  MarkerShape::Square,        MarkerShape::Triangle,    MarkerShape::Diamond,
    MarkerShape::Cross, MarkerShape::Circle,        MarkerShape::Plus,        MarkerShape::TriangleDown,
    MarkerShape::Star,  MarkerShape::CrossedSquare, MarkerShape::CrossedDisc, MarkerShape::PlusSquare};

struct PlotSeries {
    std::string name;  ///< in the legend
    std::vector<double> x;
    std::vector<double> y;
    bool asMarkers = false;
    std::vector<std::string> notes;  ///< shown when a marker is pointed at; one per point, or none
    MarkerShape shape = MarkerShape::Disc;
    bool isLimit = false;          ///< a line that values are compared with; not in the legend
    std::optional<Color> color{};  ///< without it the front end chooses
};

/// A named point on a curve, or a line across the plot.
struct PlotMark {
    std::string name;
    double x = 0;
    double y = 0;
};

/// A strip across the plot between two values, and the value in it that counts.
struct PlotBand {
    double lowest = 0;
    double highest = 0;
    double chosen = 0;
};

/// A box with a text in it.
struct PlotBox {
    std::string text;
    double left = 0;
    double right = 0;
    double bottom = 0;
    double top = 0;
    Color color = colors::window;
};

struct Plot {
    std::string title;
    PlotAxis horizontal;
    PlotAxis vertical;
    std::vector<PlotSeries> series;
    std::vector<PlotMark> marks;
    std::vector<PlotBand> bands{};
    std::vector<PlotBox> boxes{};
    bool IsEmpty() const { return series.empty(); }
};

/// A plot area of a screen.
class Picture : public Control {
  public:
    Picture(Place place, std::string name) : Control(place, std::move(name)) {}
    std::string DisplayText() const override;  ///< captions, ranges and marks

    void Draw(Plot plot);
    void Clear();
    const Plot& Drawn() const { return plot_; }

  private:
    Plot plot_;
};

}  // namespace bellmark
