#include "fwd/regression_plot.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "app/ctrl_ht_drop_array.h"
#include "platform/format.h"
#include "platform/numbers.h"
#include "run/trial.h"

namespace bellmark {

namespace {

struct TrialPoints {
    std::vector<double> fwd;
    std::vector<double> reference;
    std::vector<double> residuals;
    std::vector<std::string> notes;
};

const char* PeakPicture(const CalibrationRun& run) {
    if (CalibratesSensors(run)) return run.Trial.shape.englishUnits ? "#0.00" : "#,##0.0";
    return run.Trial.shape.englishUnits ? "#,##0.0" : "#0.000";
}

TrialPoints PointsOf(const CalibrationRun& run, std::size_t device) {
    const TrialRecord& trial = TrialOf(run, device);
    const char* picture = PeakPicture(run);
    TrialPoints points;
    for (int drop = 0; drop < run.Trial.shape.Drops(); ++drop) {
        const auto index = static_cast<std::size_t>(drop);
        const DropPlace place = PlaceOf(run.Trial.shape, drop);
        const double fwd = trial.DropData.at(index);
        const double reference = trial.RefDropData.at(index);
        const double residual = reference - trial.AdjFactor * fwd;
        points.fwd.push_back(fwd);
        points.reference.push_back(reference);
        points.residuals.push_back(residual);
        points.notes.push_back("Height " + NumberText(place.height) + ", drop " + NumberText(place.drop) + "\nFWD " +
                               Format(fwd, picture) + ", reference " + Format(reference, picture) + "\nresidual " +
                               (residual > 0 ? "+" : "") + Format(residual, picture));
    }
    return points;
}

double Largest(const std::vector<double>& values) {
    return values.empty() ? 0 : *std::max_element(values.begin(), values.end());
}

PlotAxis RangeAxis(double range) {
    return {"", 0, range, RegressionTickStep(range)};
}

double RangeOf(const CalibrationRun& run, const TrialPoints& points) {
    return RegressionPlotRange(CalibratesSensors(run), run.Trial.shape.englishUnits,
                               std::max(Largest(points.fwd), Largest(points.reference)));
}

}  // namespace

double RegressionPlotRange(bool sensors, bool englishUnits, double largest) {
    if (!sensors) return englishUnits ? 24000 : 120;
    if (englishUnits) {
        for (const double range : {20, 25, 30, 35}) {
            if (largest < range) return range;
        }
        return 10 * Round((largest + 5) / 10, 0);
    }
    for (const double range : {500, 750}) {
        if (largest < range) return range;
    }
    return 500 * Round((largest + 250) / 500, 0);
}

double RegressionTickStep(double range) {
    constexpr double mostSteps = 13;
    for (double decade = 1;; decade *= 10) {
        for (const double digit : {1, 2, 5}) {
            if (range / (digit * decade) <= mostSteps) return digit * decade;
        }
    }
}

Plot RegressionPlot(const CalibrationRun& run, std::size_t device) {
    const TrialPoints points = PointsOf(run, device);
    const double range = RangeOf(run, points);
    const double slope = TrialOf(run, device).AdjFactor;
    const bool leavesAtTop = slope > 1;
    Plot plot;
    plot.title =
        (CalibratesSensors(run) ? "Reference Deflection Trial " : "Load Cell Trial ") + NumberText(TrialCount(run));
    plot.horizontal = RangeAxis(range);
    plot.vertical = RangeAxis(range);
    plot.series.push_back({"Drops", points.fwd, points.reference, true, points.notes});
    plot.series.push_back({"Line through the origin",
                           {0, leavesAtTop ? range / slope : range},
                           {0, leavesAtTop ? range : range * slope},
                           false,
                           {}});
    return plot;
}

Plot ResidualPlot(const CalibrationRun& run, std::size_t device) {
    const TrialPoints points = PointsOf(run, device);
    double largest = 0;
    for (const double residual : points.residuals) largest = std::max(largest, std::abs(residual));
    const double end = largest > 0 ? 1.2 * largest : 1;
    Plot plot;
    plot.title = "Residuals";
    plot.horizontal = RangeAxis(RangeOf(run, points));
    plot.vertical = {"Residual", -end, end, std::nullopt};
    plot.series.push_back({"Drops", points.fwd, points.residuals, true, points.notes});
    return plot;
}

}  // namespace bellmark
