#include "results/sensor_grids.h"

#include <algorithm>
#include <string>
#include <vector>

#include "controls/controls.h"
#include "platform/format.h"
#include "platform/numbers.h"
#include "results/load_cell_evaluation.h"
#include "results/sensor_evaluation.h"
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

constexpr int fixedRows = 2;

Color LimitColor(bool fails) {
    return fails ? colors::mustBeUpdated : colors::passed;
}

template <class Gain>
std::string MeanGainText(const CalibrationRun& run, Gain gain) {
    double sum = 0;
    for (int s = 0; s < run.NumberSensors; ++s) sum += gain(run.Sensor.at(static_cast<std::size_t>(s)));
    return Format(sum / std::max(run.NumberSensors, 1), gainPicture);
}

std::vector<std::string> RelativeRow(const CalibrationRun& run, int sensor) {
    const SensorCalRecord& record = run.Sensor.at(static_cast<std::size_t>(sensor));
    std::vector<std::string> row{NumberText(ShownSensorNumber(run, sensor))};
    for (int t = 0; t < run.RelTrials; ++t)
        row.push_back(Format(record.RelTrial.at(static_cast<std::size_t>(t)).Gain, gainPicture));
    row.push_back(Format(record.FinalGain, gainPicture));
    const auto change = GainChange(record.FinalGain, record.InitialGain);
    row.push_back(change ? Format(*change, changePicture) : "-");
    return row;
}

void AddRelativeMeans(Grid& grid, const CalibrationRun& run) {
    std::vector<std::string> averages{"Avg."};
    for (std::size_t t = 0; t < static_cast<std::size_t>(run.RelTrials); ++t) {
        averages.push_back(MeanGainText(run, [t](const auto& sensor) { return sensor.RelTrial[t].Gain; }));
    }
    averages.push_back(MeanGainText(run, [](const auto& sensor) { return sensor.FinalGain; }));
    grid.AddRow(std::vector<std::string>(averages.size() + 1, emptyCell));
    grid.AddRow(averages);
    grid.AddRow({"Change"});
    grid.SetCell(grid.Rows() - 1, grid.Columns() - 1, Format(run.RefCalChange, changePicture));
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

void ShowRelativeGains(Grid& grid, const CalibrationRun& run, const SensorEvaluation* judged) {
    std::vector<std::string> titles{"            "};
    std::vector<std::string> headings{"No."};
    for (int trial = 1; trial <= run.RelTrials; ++trial) {
        titles.push_back(run.SensorRelCalComplete && trial == run.RelTrials ? " Accepted " : TrialTitle(trial));
        headings.emplace_back("Rel. Gain");
    }
    titles.insert(titles.end(), {" Calculated ", "   Overall   "});
    headings.insert(headings.end(), {" Final Gain ", " % Change "});
    grid.SetHeadings(titles);
    grid.AddRow(headings);
    if (run.RelTrials == 0) return;
    const int gainColumn = run.RelTrials + 1;
    for (int s = 0; s < run.NumberSensors; ++s) {
        grid.AddRow(RelativeRow(run, s));
        if (!judged) continue;
        const SensorCriteria& criteria = judged->sensors.at(static_cast<std::size_t>(s));
        grid.SetCellColor(fixedRows + s, gainColumn, LimitColor(criteria.FailsGain()));
        grid.SetCellColor(fixedRows + s, gainColumn + 1, LimitColor(criteria.isChangeTooLarge));
    }
    AddRelativeMeans(grid, run);
}

}  // namespace bellmark
