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

/// The axis for readings between two values. A tenth of their span is left free at either end. The low end goes down to
/// a multiple of 80 microns or 0.8 mils; the step is the tenth of what is left, up to a multiple of 4 microns or 0.04
/// mils, and the high end comes at a whole number of steps.
DeflectionAxis AxisOfDeflections(double least, double largest, bool englishUnits);

/// All drops of a relative trial: a block for each sensor, in it the drops of a set side by side. The set decides the
/// marker. Pointed at, a marker tells sensor, set, drop, reading and how far it is from the sensor's mean.
/// trial: index from 0.
Plot RelativePlot(const CalibrationRun& run, std::size_t trial);

}  // namespace bellmark
