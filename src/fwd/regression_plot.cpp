#include "fwd/regression_plot.h"

#include <algorithm>
#include <cmath>
#include <numeric>
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

const char* UnitWord(const CalibrationRun& run) {
    const bool english = run.Trial.shape.englishUnits;
    if (CalibratesSensors(run)) return english ? "mils" : "microns";
    return english ? "pounds" : "kN";
}

std::string SignedText(double value, const char* picture) {
    return (value > 0 ? "+" : "") + Format(value, picture);
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
                               SignedText(residual, picture));
    }
    return points;
}

/// "3", as in the list of sensors.
std::string SensorName(const CalibrationRun& run, std::size_t sensor) {
    return NumberText(ShownSensorNumber(run, static_cast<int>(sensor)));
}

std::vector<std::size_t> SensorsByStandardError(const CalibrationRun& run) {
    std::vector<std::size_t> sensors(DevicesInTrial(run));
    std::iota(sensors.begin(), sensors.end(), std::size_t{0});
    std::stable_sort(sensors.begin(), sensors.end(), [&](std::size_t a, std::size_t b) {
        return TrialOf(run, a).StdErrAdjFactor > TrialOf(run, b).StdErrAdjFactor;
    });
    return sensors;
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

Plot ResidualsOfAllSensors(const CalibrationRun& run, std::size_t device) {
    constexpr double margin = 0.08;  // of a block's width, on either side
    const double range = RangeOf(run, PointsOf(run, device));
    PlotSeries all{"", {}, {}, true, {}};
    PlotSeries own{"", {}, {}, true, {}};
    double largest = 0;
    Plot plot;
    double block = 0;
    for (const std::size_t sensor : SensorsByStandardError(run)) {
        const TrialPoints points = PointsOf(run, sensor);
        const std::string name = SensorName(run, sensor);
        for (std::size_t drop = 0; drop < points.fwd.size(); ++drop) {
            const double x = block + margin + (1 - 2 * margin) * points.fwd[drop] / range;
            largest = std::max(largest, std::abs(points.residuals[drop]));
            for (PlotSeries* series : {&all, &own}) {
                if (series == &own && sensor != device) continue;
                series->x.push_back(x);
                series->y.push_back(points.residuals[drop]);
                series->notes.push_back("Sensor " + name + ". " + points.notes[drop]);
            }
        }
        plot.horizontal.blocks.push_back({name, block, block + 1, 0});
        block += 1;
    }
    const double end = largest > 0 ? 1.2 * largest : 1;
    plot.title = "Residuals of all sensors";
    plot.horizontal.caption = "Sensor";
    plot.horizontal.highest = std::max(block, 1.0);
    plot.vertical = {"Residual", -end, end, std::nullopt};
    plot.series = {all, own};
    return plot;
}

std::optional<FurthestDrop> FurthestDropOf(const CalibrationRun& run, std::size_t device) {
    const TrialPoints points = PointsOf(run, device);
    const std::size_t drops = points.residuals.size();
    if (drops < 3) return {};
    const auto isNearer = [](double a, double b) { return std::abs(a) < std::abs(b); };
    const auto furthest = std::max_element(points.residuals.begin(), points.residuals.end(), isNearer);
    const auto index = furthest - points.residuals.begin();
    TrialPoints others = points;
    others.fwd.erase(others.fwd.begin() + index);
    others.reference.erase(others.reference.begin() + index);
    const OriginRegression fit = RegressThroughOrigin(others.fwd, others.reference, static_cast<int>(drops) - 1);
    return FurthestDrop{PlaceOf(run.Trial.shape, static_cast<int>(index)), *furthest,
                        fit.slope * InitialGainOf(run, device)};
}

std::string FurthestDropText(const CalibrationRun& run, std::size_t device) {
    const auto drop = FurthestDropOf(run, device);
    if (!drop) return {};
    return "Furthest from the line: height " + NumberText(drop->place.height) + ", drop " +
           NumberText(drop->place.drop) + " (" + SignedText(drop->residual, PeakPicture(run)) + ' ' + UnitWord(run) +
           "). Without it the new gain would be " + Format(drop->gainWithout, "0.0000") + ".";
}

}  // namespace bellmark
