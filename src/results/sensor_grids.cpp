#include "results/sensor_grids.h"

#include <algorithm>
#include <string>
#include <vector>

#include "controls/controls.h"
#include "platform/format.h"
#include "platform/numbers.h"
#include "run/calibration_run.h"
#include "run/reference_trials.h"

namespace bellmark {

namespace {

constexpr const char* gainPicture = "0.000";
constexpr const char* changePicture = "0.0%";
constexpr const char* emptyCell = "  ";

double MeanInitialGain(const CalibrationRun& run) {
    double sum = 0;
    for (int s = 0; s < run.NumberSensors; ++s) sum += run.Sensor.at(static_cast<std::size_t>(s)).InitialGain;
    return sum / std::max(run.NumberSensors, 1);
}

std::string TrialTitle(int trial) {
    return "    Trial " + NumberText(trial) + "    ";
}

std::vector<std::string> ReferenceRow(const CalibrationRun& run, int sensor, int trials) {
    const SensorCalRecord& record = run.Sensor.at(static_cast<std::size_t>(sensor));
    std::vector<std::string> row{NumberText(ShownSensorNumber(run, sensor)), record.SerialNumber,
                                 Format(record.InitialGain, gainPicture)};
    for (int t = 0; t < trials; ++t)
        row.push_back(Format(record.RefTrial.at(static_cast<std::size_t>(t)).Gain, gainPicture));
    if (IsPaired(trials)) row.push_back(Format(record.InterimGain, gainPicture));
    return row;
}

}  // namespace

void ShowReferenceGains(Grid& grid, const CalibrationRun& run, int trials) {
    std::vector<std::string> titles{"      ", "   Serial   ", "   Initial   "};
    std::vector<std::string> headings{"No.", "Number", "Gain"};
    std::vector<std::string> averages{"-", "Average", Format(MeanInitialGain(run), gainPicture)};
    std::vector<std::string> changes{"-", "Change", ""};
    for (int t = 0; t < trials; ++t) {
        const ReferenceTrialSummary& summary = run.RefTrial.at(static_cast<std::size_t>(t));
        titles.push_back(TrialTitle(t + 1));
        headings.emplace_back("Ref. Gain");
        averages.push_back(Format(summary.Avg, gainPicture));
        changes.push_back(Format(summary.Change, changePicture));
    }
    if (IsPaired(trials)) {
        titles.emplace_back("   Interim   ");
        headings.emplace_back("  Gain   ");
        averages.push_back(Format(run.RefCalAvg, gainPicture));
        changes.push_back(Format(run.RefCalChange, changePicture));
    }
    grid.SetHeadings(titles);
    grid.AddRow(headings);
    for (int s = 0; s < run.NumberSensors; ++s) grid.AddRow(ReferenceRow(run, s, trials));
    grid.AddRow(std::vector<std::string>(titles.size(), emptyCell));
    grid.AddRow(averages);
    grid.AddRow(changes);
}

}  // namespace bellmark
