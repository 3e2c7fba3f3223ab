#include "reference/drop_plot.h"

#include <algorithm>

#include "run/center_config.h"

namespace bellmark {

namespace {

constexpr int samplesBeforeFulcrum = 600;
constexpr int zoomedSamples = 3000;
constexpr double millisecondsPerSecond = 1000;

double Milliseconds(int sample) {
    return millisecondsPerSecond * sample / samplesPerSecond;
}

struct Curve {
    const char* name;
    const std::vector<double>& values;
    const char* unit;
    double scale;
};

Curve CurveOf(const DropRecord& drop, DropCurve curve, bool englishUnits) {
    const char* loadUnit = englishUnits ? "lbf" : "kN";
    const double loadScale = englishUnits ? 1 : kilonewtonsPerPound;
    switch (curve) {
        case DropCurve::Acceleration:
            return {"Voltage", drop.RelAccelG, "volts", 1};
        case DropCurve::Velocity:
            return {"Offset", drop.Velocity, loadUnit, loadScale};
        case DropCurve::Deflection:
            break;
    }
    return {"Force", drop.Displacement, loadUnit, loadScale};
}

}  // namespace

Plot LoadDropPlot(const DropRecord& drop, DropCurve curve, bool zoomedIn, bool englishUnits) {
    Plot plot;
    if (drop.NumSamples < 2) return plot;
    const int first = zoomedIn ? std::max(drop.FulcrumIndex - samplesBeforeFulcrum, 0) : 1;
    const int last = zoomedIn ? std::min(first + zoomedSamples, drop.NumSamples) : drop.NumSamples;
    const Curve drawn = CurveOf(drop, curve, englishUnits);
    const auto valueAt = [&](int sample) { return drawn.values[static_cast<std::size_t>(sample)] * drawn.scale; };

    PlotSeries series{drawn.name, {}, {}, false, {}};
    double lowest = valueAt(first);
    double highest = lowest;
    for (int i = first; i < last; ++i) {
        const double value = valueAt(i);
        series.x.push_back(Milliseconds(i));
        series.y.push_back(value);
        lowest = std::min(lowest, value);
        highest = std::max(highest, value);
    }
    const double margin = highest > lowest ? 0.1 * (highest - lowest) : 1;
    plot.title = drawn.name;
    plot.horizontal = {"Time (mSec)", Milliseconds(first), Milliseconds(last), {}};
    plot.vertical = {drawn.unit, lowest - margin, highest + margin, {}};
    plot.series.push_back(std::move(series));
    const bool startIsKnown = drop.StartPulseIndex >= first && drop.StartPulseIndex < drop.PeakIndex;
    if (startIsKnown)
        plot.marks.push_back({"Start", Milliseconds(drop.StartPulseIndex), valueAt(drop.StartPulseIndex)});
    if (drop.PeakIndex >= first && drop.PeakIndex < last) {
        plot.marks.push_back({"Peak", Milliseconds(drop.PeakIndex), valueAt(drop.PeakIndex)});
    }
    return plot;
}

}  // namespace bellmark
