#include "results/history_plot.h"

#include <algorithm>
#include <cmath>

#include "analysis/analysis.h"
#include "platform/format.h"
#include "platform/numbers.h"
#include "platform/text.h"
#include "results/load_cell_evaluation.h"
#include "results/sensor_evaluation.h"
#include "run/calibration_run.h"

namespace bellmark {

namespace {

constexpr const char* gainPicture = "0.0000";  // as a document holds it
constexpr const char* newGainPicture = "0.000";

int YearOf(DateTime date) {
    return static_cast<int>(ReadNumber(Format(date, "yyyy")));
}

/// The year with the part of it that has passed, from 0 at the start of 1 January.
double YearsOf(DateTime date) {
    const int year = YearOf(date);
    const auto length = MakeDateTime(year + 1, 1, 1) - MakeDateTime(year, 1, 1);
    const auto passed = date - MakeDateTime(year, 1, 1);
    return year + static_cast<double>(passed.count()) / static_cast<double>(length.count());
}

const SensorCalRecord& SensorOf(const CalibrationRun& run, int device) {
    return run.Sensor.at(static_cast<std::size_t>(device - 1));
}

std::string DeviceName(const CalibrationRun& run, int device) {
    if (device == 0) return "Load cell " + run.LoadCellSerialNumber;
    return "Sensor " + NumberText(ShownSensorNumber(run, device - 1)) + ' ' + SensorOf(run, device).SerialNumber;
}

/// The text of the gain of a sensor; empty when the calibration is of other sensors.
std::string SensorGainText(const EarlierCalibration& calibration, const CalibrationRun& run, int device) {
    const auto& serials = calibration.sensorSerialNumbers;
    auto place = static_cast<std::size_t>(device - 1);
    const std::string_view wanted = Trim(SensorOf(run, device).SerialNumber);
    if (!serials.empty() && !wanted.empty()) {
        const auto found = std::find_if(serials.begin(), serials.end(),
                                        [&](const std::string& serial) { return EqualIgnoringCase(serial, wanted); });
        if (found == serials.end()) return {};
        place = static_cast<std::size_t>(found - serials.begin());
    }
    return place < calibration.sensorGains.size() ? calibration.sensorGains[place] : std::string();
}

std::string LoadCellGainText(const EarlierCalibration& calibration, const CalibrationRun& run) {
    const std::string& then = calibration.loadCellSerialNumber;
    const std::string_view now = Trim(run.LoadCellSerialNumber);
    const bool isOther = !then.empty() && !now.empty() && !EqualIgnoringCase(then, now);
    return isOther ? std::string() : calibration.loadCellGain;
}

std::optional<DatedGain> EarlierGain(const EarlierCalibration& calibration, const CalibrationRun& run, int device) {
    const bool isLoadCell = device == 0;
    const std::string& ownDate = isLoadCell ? calibration.loadCellDate : calibration.sensorDate;
    const auto date = ReadDateTime(ownDate.empty() ? calibration.Date() : ownDate);
    const auto gain =
        NumberIn(isLoadCell ? LoadCellGainText(calibration, run) : SensorGainText(calibration, run, device));
    if (!date || !gain) return {};
    return DatedGain{*date, *gain};
}

/// 0 until it is computed.
double GainOfRun(const CalibrationRun& run, int device) {
    return device == 0 ? run.NewLoadCellCalibrationCenterGain : SensorOf(run, device).FinalGain;
}

/// Its name in the legend is short: twelve stand side by side.
PlotSeries SeriesOf(const CalibrationRun& run, int device, const std::vector<DatedGain>& gains, std::size_t number) {
    const std::string name = DeviceName(run, device);
    PlotSeries series;
    if (device > 0) series.name = NumberText(ShownSensorNumber(run, device - 1));
    series.asMarkers = true;
    series.shape = markerShapes[number % markerShapes.size()];
    for (const DatedGain& gain : gains) {
        series.x.push_back(YearsOf(gain.date));
        series.y.push_back(gain.gain);
        series.notes.push_back(name + (gain.isOfRun ? ", this run\n" : "\n") + Format(gain.date, "d-mmm-yyyy") + ": " +
                               Format(gain.gain, gainPicture));
    }
    return series;
}

/// Whole years, put together so that at most twelve captions stand side by side.
void SetYears(int first, int last, PlotAxis& axis) {
    constexpr int mostBlocks = 12;
    int step = 1;
    for (const int wider : {2, 5, 10, 20, 50, 100}) {
        if ((last - first) / step < mostBlocks) break;
        step = wider;
    }
    axis.caption = "Year";
    axis.lowest = first;
    axis.highest = first;
    for (int year = first; year <= last; year += step) {
        const std::string end = step > 1 ? "-" + NumberText(year + step - 1).substr(2) : std::string();
        axis.blocks.push_back({NumberText(year) + end, axis.highest, axis.highest + step, std::nullopt});
        axis.highest += step;
    }
}

struct GainLimits {
    double smallest;
    double greatest;
};

GainLimits LimitsOf(const CalibrationRun& run, const ShownGains& shown) {
    if (shown.devices.front() == 0) return {loadCellLimits::smallestGain, loadCellLimits::greatestGain};
    const FinalGainLimits limits = LimitsOfFinalGain(run.Manufacturer);
    return {limits.smallest, limits.greatest};
}

/// All gains and both limits, with some room.
void SetRange(const Plot& plot, const GainLimits& limits, PlotAxis& axis) {
    constexpr double room = 0.15;
    double least = limits.smallest;
    double most = limits.greatest;
    for (const PlotSeries& series : plot.series) {
        least = std::min(least, *std::min_element(series.y.begin(), series.y.end()));
        most = std::max(most, *std::max_element(series.y.begin(), series.y.end()));
    }
    axis.caption = "Gain";
    axis.lowest = least - room * (most - least);
    axis.highest = most + room * (most - least);
}

void AddLimit(double limit, Plot& plot) {
    PlotSeries line;
    line.x = {plot.horizontal.lowest, plot.horizontal.highest};
    line.y = {limit, limit};
    line.isLimit = true;
    plot.series.push_back(std::move(line));
}

std::vector<DatedGain> AllGains(const std::vector<EarlierCalibration>& history, const CalibrationRun& run,
                                const ShownGains& shown, DateTime now) {
    std::vector<DatedGain> all;
    for (const int device : shown.devices) {
        const auto gains = GainsOf(history, run, device, now);
        all.insert(all.end(), gains.begin(), gains.end());
    }
    return all;
}

bool IsOlder(const DatedGain& one, const DatedGain& other) {
    return one.date < other.date;
}

}  // namespace

std::vector<ShownGains> GainsToChoose(const CalibrationRun& run) {
    std::vector<ShownGains> choices;
    ShownGains all{"All sensors", {}};
    for (int sensor = 1; sensor <= run.NumberSensors; ++sensor) all.devices.push_back(sensor);
    if (!all.devices.empty()) choices.push_back(all);
    choices.push_back({DeviceName(run, 0), {0}});
    for (const int sensor : all.devices) choices.push_back({DeviceName(run, sensor), {sensor}});
    return choices;
}

std::vector<DatedGain> GainsOf(const std::vector<EarlierCalibration>& history, const CalibrationRun& run, int device,
                               DateTime now) {
    const double ofRun = GainOfRun(run, device);
    bool isAdded = false;
    std::vector<DatedGain> gains;
    for (const EarlierCalibration& calibration : history) {
        auto gain = EarlierGain(calibration, run, device);
        if (!gain) continue;
        const bool isToday = DayOf(gain->date) == DayOf(now);
        gain->isOfRun = isToday && ofRun != 0 && Format(gain->gain, gainPicture) == Format(ofRun, gainPicture);
        isAdded = isAdded || gain->isOfRun;
        gains.push_back(*gain);
    }
    if (ofRun != 0 && !isAdded) gains.push_back({DayOf(now), ofRun, true});
    std::stable_sort(gains.begin(), gains.end(), IsOlder);
    return gains;
}

std::optional<double> ChangePerYear(const std::vector<DatedGain>& gains) {
    constexpr double daysPerYear = 365.25;
    if (gains.empty()) return {};
    const auto count = static_cast<double>(gains.size());
    std::vector<double> years;
    std::vector<double> values;
    double meanYear = 0;
    double meanGain = 0;
    for (const DatedGain& gain : gains) {
        const std::chrono::duration<double, std::ratio<86400>> since = gain.date - gains.front().date;
        years.push_back(since.count() / daysPerYear);
        values.push_back(gain.gain);
        meanYear += years.back() / count;
        meanGain += gain.gain / count;
    }
    if (years.back() == 0 || meanGain == 0) return {};
    // A line through the means is one through the origin of the differences from them.
    for (double& year : years) year -= meanYear;
    for (double& value : values) value -= meanGain;
    return RegressThroughOrigin(years, values, static_cast<int>(years.size())).slope / meanGain;
}

Plot HistoryPlot(const std::vector<EarlierCalibration>& history, const CalibrationRun& run, const ShownGains& shown,
                 DateTime now) {
    Plot plot;
    std::vector<DatedGain> all;
    for (const int device : shown.devices) {
        const auto gains = GainsOf(history, run, device, now);
        if (!gains.empty()) plot.series.push_back(SeriesOf(run, device, gains, plot.series.size()));
        all.insert(all.end(), gains.begin(), gains.end());
    }
    if (all.empty()) return plot;
    // One device needs no legend.
    if (shown.devices.size() == 1) plot.series.front().name.clear();
    plot.title = "Gains over the years: " + shown.name;
    const auto [first, last] = std::minmax_element(all.begin(), all.end(), IsOlder);
    SetYears(YearOf(first->date), YearOf(last->date), plot.horizontal);
    const GainLimits limits = LimitsOf(run, shown);
    SetRange(plot, limits, plot.vertical);
    AddLimit(limits.smallest, plot);
    AddLimit(limits.greatest, plot);
    const auto ofRun = std::find_if(all.begin(), all.end(), [](const DatedGain& gain) { return gain.isOfRun; });
    if (ofRun != all.end()) plot.marks.push_back({"This run", YearsOf(ofRun->date), ofRun->gain});
    return plot;
}

std::string TrendText(const std::vector<EarlierCalibration>& history, const CalibrationRun& run,
                      const ShownGains& shown, DateTime now) {
    const std::vector<DatedGain> gains = AllGains(history, run, shown, now);
    if (gains.empty()) return "No gains yet.";
    const GainLimits limits = LimitsOf(run, shown);
    const std::string lines =
        " Dashed: limits " + NumberText(limits.smallest) + " and " + NumberText(limits.greatest) + '.';
    if (shown.devices.size() > 1) return "One marker a sensor, by its number. Choose one to see its trend." + lines;
    const auto [least, most] = std::minmax_element(
        gains.begin(), gains.end(), [](const DatedGain& one, const DatedGain& other) { return one.gain < other.gain; });
    std::string text = NumberText(gains.size()) + (gains.size() == 1 ? " calibration, " : " calibrations, ") +
                       NumberText(YearOf(gains.front().date)) + " to " + NumberText(YearOf(gains.back().date)) +
                       ": gain " + Format(least->gain, gainPicture) + " to " + Format(most->gain, gainPicture);
    if (const auto change = ChangePerYear(gains)) {
        text += std::string(", on average ") + (*change > 0 ? "+" : "") + Format(*change, "0.00%") + " a year";
    }
    return text + '.' + lines;
}

std::string NewGainsText(const CalibrationRun& run, DateTime now) {
    const auto newGain = [&](int device) {
        const auto gains = GainsOf({}, run, device, now);
        return gains.empty() ? std::string() : Format(gains.back().gain, newGainPicture);
    };
    const std::string loadCell = newGain(0);
    std::string sensors;
    for (int device = 1; device <= run.NumberSensors; ++device) {
        const std::string gain = newGain(device);
        if (gain.empty()) continue;
        sensors += (sensors.empty() ? "sensors " : ", ") + NumberText(ShownSensorNumber(run, device - 1)) + ": " + gain;
    }
    if (loadCell.empty() && sensors.empty()) return "No new gains yet.";
    const std::string both = loadCell.empty() || sensors.empty() ? "" : "; ";
    return "New gains: " + (loadCell.empty() ? "" : "load cell " + loadCell) + both + sensors + '.';
}

}  // namespace bellmark
