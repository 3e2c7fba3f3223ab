#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "controls/control.h"

namespace bellmark {

/// A part of an axis that belongs to one thing, its limits and the mean of what is drawn in it.
struct PlotBlock {
    std::string caption;
    double from = 0;
    double to = 0;
    double mean = 0;
};

/// What a plot is to show; how it is drawn is the front end's. Values are in the unit of the axis caption.
struct PlotAxis {
    std::string caption;
    double lowest = 0;
    double highest = 1;
    std::optional<double> tickStep;   ///< from the lowest value on; chosen by the front end when there is none
    int decimals = 0;                 ///< of the numbers at the ticks, where there is a step
    std::vector<PlotBlock> blocks{};  ///< shown in place of numbers, where there are any
};

/// Told apart without colour.
enum class MarkerShape { Disc, Square, Triangle, Diamond, Cross, Circle, Plus, TriangleDown, Star, CrossedSquare };
inline constexpr std::array markerShapes{MarkerShape::Disc,         MarkerShape::Square,       MarkerShape::Triangle,
                                         MarkerShape::Diamond,      MarkerShape::Cross,        MarkerShape::Circle,
                                         MarkerShape::Plus,         MarkerShape::TriangleDown, MarkerShape::Star,
                                         MarkerShape::CrossedSquare};

struct PlotSeries {
    std::string name;
    std::vector<double> x;
    std::vector<double> y;
    bool asMarkers = false;
    std::vector<std::string> notes;  ///< what a marker tells when it is pointed at; one for each point, or none
    MarkerShape shape = MarkerShape::Disc;
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

struct Plot {
    std::string title;
    PlotAxis horizontal;
    PlotAxis vertical;
    std::vector<PlotSeries> series;
    std::vector<PlotMark> marks;
    std::vector<PlotBand> bands{};
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
