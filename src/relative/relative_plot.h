#pragma once

#include <cstddef>

#include "controls/picture.h"

namespace bellmark {

struct CalibrationRun;

/// Ends and step of the axis of deflections, in mils or microns.
struct DeflectionAxis {
    double lowest = 0;
    double highest = 1;
    double step = 0.1;
};

/// The axis for readings between two values, with a margin of a tenth of their span at either end. The low end is
/// rounded down to a multiple of 80 microns or 0.8 mils. The step is a tenth of the range, rounded up to a multiple of
/// 4 microns or 0.04 mils. The high end is a whole number of steps above the low end.
DeflectionAxis AxisOfDeflections(double least, double largest, bool englishUnits);

/// All drops of a relative trial, with a block for each sensor and the drops of a set side by side. Each set has its
/// own marker. The note of a marker gives sensor, set, drop, reading and the distance from the sensor's mean. trial:
/// index from 0.
Plot RelativePlot(const CalibrationRun& run, std::size_t trial);

}  // namespace bellmark
