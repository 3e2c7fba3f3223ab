#include "monthly/rotation_plan.h"

#include "controls/controls.h"
#include "monthly/rotation.h"
#include "platform/numbers.h"
#include "run/calibration_run.h"

namespace bellmark {

namespace {

constexpr std::size_t dropsOfASet = 7;  ///< two seating drops, then five recorded ones

}  // namespace

std::string RotatedSensorLabel(const CalibrationRun& run, std::size_t sensor) {
    return "D" + NumberText(ShownSensorNumber(run, static_cast<int>(sensor)));
}

std::string RotationInstructions(std::size_t sensors, bool englishUnits) {
    return "  • Set the up the FWD to perform " + NumberText(sensors * dropsOfASet) +
           " drops in sets of seven (2 seating then 5 recorded drops). \r\n"
           "   • Position the sensors in the stand as shown in Set 1. \r\n"
           "   • Perform sets of seven drops (2 seating followed by 5 recorded) at a deflection of " +
           (englishUnits ? "20 mils ±4 mils." : "500 microns ±100 microns.") +
           "\r\n"
           "   • Rotate the sensors between sets as shown in the grid below.\r\n"
           "   • Do NOT raise the FWD load plate between sets.\r\n"
           "   • After completion of the drops, read the data into Bellmark by using the Browse button.";
}

void ShowRotation(Grid& grid, const CalibrationRun& run, std::size_t sensors) {
    std::vector<std::string> headings{"Position"};
    for (std::size_t set = 0; set < sensors; ++set) headings.push_back("Set " + NumberText(set + 1));
    grid.SetHeadings(headings);
    for (std::size_t position = 0; position < sensors; ++position) {
        std::vector<std::string> cells{NumberText(position + 1)};
        for (std::size_t set = 0; set < sensors; ++set)
            cells.push_back(RotatedSensorLabel(run, SensorAt(position, set, sensors)));
        grid.AddRow(cells);
        for (std::size_t set = 0; set < sensors; ++set) {
            const bool isFirst = SensorAt(position, set, sensors) == 0;
            grid.SetCellColor(static_cast<int>(position) + 1, static_cast<int>(set) + 1,
                              isFirst ? colors::passed : colors::window);
        }
    }
}

Plot StandPicture(const CalibrationRun& run, std::size_t sensors, std::size_t set) {
    Plot plot;
    if (sensors == 0) return plot;
    const auto count = static_cast<double>(sensors);
    plot.title = "Stand in set " + NumberText(set + 1);
    plot.horizontal = {"Set", 0, count, std::nullopt};
    plot.vertical = {"Position from the top", 0, count, std::nullopt};
    PlotSeries path;
    path.name = "Path of " + RotatedSensorLabel(run, 0);
    path.asMarkers = true;
    path.color = colors::complete;
    for (std::size_t at = 0; at < sensors; ++at) {
        const auto left = static_cast<double>(at);
        // Ten numbers side by side would run together.
        const bool isNumbered = sensors < 10 || at % 2 == 0;
        plot.horizontal.blocks.push_back({isNumbered ? NumberText(at + 1) : std::string(), left, left + 1});
        // The first position is the top.
        const double top = count - left;
        plot.vertical.blocks.push_back({NumberText(at + 1), top - 1, top});
        const std::size_t sensor = SensorAt(at, set, sensors);
        // Wide enough for "D12".
        const auto inSet = static_cast<double>(set);
        plot.boxes.push_back({RotatedSensorLabel(run, sensor), inSet - 0.4, inSet + 1.4, top - 1, top,
                              sensor == 0 ? colors::passed : colors::window});
        path.x.push_back(left + 0.5);
        path.y.push_back(count - static_cast<double>(PositionOf(0, at, sensors)) - 0.5);
        path.notes.push_back("Set " + NumberText(at + 1) + ": " + RotatedSensorLabel(run, 0) + " in position " +
                             NumberText(PositionOf(0, at, sensors) + 1));
    }
    plot.series.push_back(std::move(path));
    return plot;
}

}  // namespace bellmark
