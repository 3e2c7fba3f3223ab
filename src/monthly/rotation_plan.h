#pragma once

#include <cstddef>
#include <string>

#include "controls/picture.h"

/// What the operator is shown of the rotation: the instructions, the grid and the drawn stand.
namespace bellmark {

class Grid;
struct CalibrationRun;

/// "D1" for the first sensor, with a KUAB "D0".
std::string RotatedSensorLabel(const CalibrationRun& run, std::size_t sensor);

/// What to do, a line each, for a trial of so many sensors.
std::string RotationInstructions(std::size_t sensors, bool englishUnits);

/// Positions from the top of the stand down, sets across. The cells of the first sensor are green.
void ShowRotation(Grid& grid, const CalibrationRun& run, std::size_t sensors);

/// The stand with its sensors in one set, and the path of the first sensor through all sets. set: from 0.
Plot StandPicture(const CalibrationRun& run, std::size_t sensors, std::size_t set);

}  // namespace bellmark
