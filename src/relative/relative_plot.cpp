#include "relative/relative_plot.h"

#include <algorithm>
#include <cmath>

#include "platform/format.h"
#include "platform/numbers.h"
#include "relative/relative_analysis.h"
#include "run/calibration_run.h"

namespace bellmark {

namespace {

constexpr double blockWidth = 500;
constexpr double dropWidth = blockWidth / relativeDropsPerSet;

struct ShownTrial {
    const CalibrationRun& run;
    std::size_t trial;
    std::size_t sensors;
    std::size_t drops;

    double Reading(std::size_t sensor, std::size_t drop) const {
        return run.Sensor[sensor].RelTrial[trial].DropData[drop];
    }
};

/// A monthly trial has a set for each position in the stand.
ShownTrial ShownOf(const CalibrationRun& run, std::size_t trial) {
    const std::size_t sensors = SensorCount(run);
    const std::size_t monthly = std::min(sensors * relativeDropsPerSet, maxRelativeDrops);
    return {run, trial, sensors, run.MonthlyCalibration ? monthly : static_cast<std::size_t>(relativeDrops)};
}

std::string SensorLabel(const CalibrationRun& run, std::size_t sensor) {
    const std::string number = NumberText(ShownSensorNumber(run, static_cast<int>(sensor)));
    return run.Manufacturer == Make::Kuab ? "D" + number : number;
}

std::string NoteOf(const ShownTrial& shown, std::size_t sensor, std::size_t drop, double mean) {
    const bool english = shown.run.EnglishUnits;
    const char* picture = english ? "#0.000" : "#,##0.00";
    const double reading = shown.Reading(sensor, drop);
    const double distance = reading - mean;
    return "Sensor " + SensorLabel(shown.run, sensor) + ", set " + NumberText(drop / relativeDropsPerSet + 1) +
           ", drop " + NumberText(drop % relativeDropsPerSet + 1) + '\n' + Format(reading, picture) +
           (english ? " mils\n" : " microns\n") + (distance > 0 ? "+" : "") + Format(distance, picture) +
           " from the sensor's mean";
}

double MeanOf(const ShownTrial& shown, std::size_t sensor) {
    double sum = 0;
    for (std::size_t drop = 0; drop < shown.drops; ++drop) sum += shown.Reading(sensor, drop);
    return sum / static_cast<double>(shown.drops);
}

void AddSets(const ShownTrial& shown, const std::vector<double>& means, Plot& plot) {
    for (std::size_t first = 0; first < shown.drops; first += relativeDropsPerSet) {
        const std::size_t set = first / relativeDropsPerSet;
        PlotSeries series;
        series.name = "Set " + NumberText(set + 1);
        series.asMarkers = true;
        series.shape = markerShapes[set % markerShapes.size()];
        for (std::size_t sensor = 0; sensor < shown.sensors; ++sensor) {
            for (std::size_t drop = 0; drop < relativeDropsPerSet; ++drop) {
                series.x.push_back(blockWidth * static_cast<double>(sensor) +
                                   dropWidth * (static_cast<double>(drop) + 0.5));
                series.y.push_back(shown.Reading(sensor, first + drop));
                series.notes.push_back(NoteOf(shown, sensor, first + drop, means[sensor]));
            }
        }
        plot.series.push_back(std::move(series));
    }
}

void AddBlocks(const ShownTrial& shown, const std::vector<double>& means, Plot& plot) {
    for (std::size_t sensor = 0; sensor < shown.sensors; ++sensor) {
        const double from = blockWidth * static_cast<double>(sensor);
        plot.horizontal.blocks.push_back({SensorLabel(shown.run, sensor), from, from + blockWidth, means[sensor]});
    }
}

void SetVerticalAxis(const ShownTrial& shown, Plot& plot) {
    // The procedure looks at the drops up to this one; those of later sets may lie beyond the axis.
    constexpr std::size_t mostDropsScanned = 50;
    double least = shown.Reading(0, 0);
    double largest = least;
    for (std::size_t sensor = 0; sensor < shown.sensors; ++sensor) {
        for (std::size_t drop = 0; drop < std::min(shown.drops, mostDropsScanned); ++drop) {
            least = std::min(least, shown.Reading(sensor, drop));
            largest = std::max(largest, shown.Reading(sensor, drop));
        }
    }
    const bool english = shown.run.EnglishUnits;
    const DeflectionAxis axis = AxisOfDeflections(least, largest, english);
    plot.vertical = {english ? "Deflections (mils)" : "Deflections (microns)", axis.lowest, axis.highest, axis.step};
    // A tick at 19.24 mils must not be labelled 19.2.
    const bool hasTenths = Round(axis.step * 10, 6) == std::floor(Round(axis.step * 10, 6));
    plot.vertical.decimals = !english ? 0 : hasTenths ? 1 : 2;
}

}  // namespace

DeflectionAxis AxisOfDeflections(double least, double largest, bool englishUnits) {
    constexpr double freeShare = 0.1;
    constexpr double endMultiple = 80;
    constexpr double stepMultiple = 4;
    constexpr double steps = 10;
    constexpr double slack = 1e-9;  // tolerates rounding in multiples
    const double unit = englishUnits ? 0.01 : 1;
    const double span = largest - least;
    const double high = (largest + freeShare * span) / unit;
    const double low = std::floor((least - freeShare * span) / unit / endMultiple + slack) * endMultiple;
    const double step = std::max(1.0, std::ceil((high - low) / steps / stepMultiple - slack)) * stepMultiple;
    const double count = std::max(1.0, std::ceil((high - low) / step - slack));
    return {Round(low * unit, 6), Round((low + count * step) * unit, 6), Round(step * unit, 6)};
}

Plot RelativePlot(const CalibrationRun& run, std::size_t trial) {
    const ShownTrial shown = ShownOf(run, trial);
    Plot plot;
    plot.title = "Relative Calibration Trial " + NumberText(trial + 1);
    if (shown.sensors == 0 || trial >= maxTrials) return plot;
    std::vector<double> means;
    for (std::size_t sensor = 0; sensor < shown.sensors; ++sensor) means.push_back(MeanOf(shown, sensor));
    plot.horizontal = {"Sensor", 0, blockWidth * static_cast<double>(shown.sensors), std::nullopt};
    SetVerticalAxis(shown, plot);
    AddSets(shown, means, plot);
    AddBlocks(shown, means, plot);
    return plot;
}

}  // namespace bellmark
