#include "reference/drop_plot.h"

#include <algorithm>

#include "reference/accel_integration.h"
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

Curve LoadCurveOf(const DropRecord& drop, DropCurve curve, bool englishUnits) {
    const char* loadUnit = englishUnits ? "lbf" : "kN";
    const double loadScale = englishUnits ? 1 : kilonewtonsPerPound;
    switch (curve) {
        case DropCurve::Acceleration:
            return {"Voltage", drop.RelAccelG, "volts", 1};
        case DropCurve::Velocity:
            return {"Offset", drop.Velocity, loadUnit, loadScale};
        case DropCurve::Deflection:
        case DropCurve::StdDev:
            break;
    }
    return {"Force", drop.Displacement, loadUnit, loadScale};
}

Curve AccelCurveOf(const DropRecord& drop, DropCurve curve, bool englishUnits) {
    const double scale = englishUnits ? 1 / micronsPerMil : 1;
    switch (curve) {
        case DropCurve::Acceleration:
            return {"Acceleration", drop.RelAccelG, "g", 1};
        case DropCurve::Velocity:
            return {"Velocity", drop.Velocity, englishUnits ? "mils/s" : "microns/s", scale};
        case DropCurve::StdDev:
            return {"Std.Dev.", drop.AccelSD25, "g", 1};
        case DropCurve::Deflection:
            break;
    }
    return {"Deflection", drop.Displacement, englishUnits ? "mils" : "microns", scale};
}

/// A sample that is marked on the curve.
struct MarkedSample {
    const char* name;
    int sample;
};

Plot PlotOf(const DropRecord& drop, const Curve& drawn, bool zoomedIn, std::initializer_list<MarkedSample> marks) {
    Plot plot;
    if (drop.NumSamples < 2) return plot;
    const int first = zoomedIn ? std::max(drop.FulcrumIndex - samplesBeforeFulcrum, 0) : 1;
    const int last = zoomedIn ? std::min(first + zoomedSamples, drop.NumSamples) : drop.NumSamples;
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
    for (const MarkedSample& mark : marks) {
        if (mark.sample < first || mark.sample >= last) continue;
        plot.marks.push_back({mark.name, Milliseconds(mark.sample), valueAt(mark.sample)});
    }
    return plot;
}

constexpr int unknown = -1;

/// When no start was found, StartPulseIndex is at the peak or after it.
int KnownStart(const DropRecord& drop) {
    return drop.StartPulseIndex < drop.PeakIndex ? drop.StartPulseIndex : unknown;
}

}  // namespace

Plot LoadDropPlot(const DropRecord& drop, DropCurve curve, bool zoomedIn, bool englishUnits) {
    return PlotOf(drop, LoadCurveOf(drop, curve, englishUnits), zoomedIn,
                  {{"Start", KnownStart(drop)}, {"Peak", drop.PeakIndex}});
}

Plot AccelDropPlot(const DropRecord& drop, DropCurve curve, bool zoomedIn, bool englishUnits) {
    return PlotOf(drop, AccelCurveOf(drop, curve, englishUnits), zoomedIn,
                  {{"Fulcrum", drop.FulcrumIndex}, {"Start", KnownStart(drop)}, {"Peak", drop.PeakIndex}});
}

}  // namespace bellmark
