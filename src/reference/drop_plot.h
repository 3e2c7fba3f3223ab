#pragma once

#include "controls/picture.h"
#include "run/drop_record.h"

namespace bellmark {

enum class LoadCurve { Voltage, Offset, Force };

/// The load cell drop as it is drawn: volts after the shunt correction, total load, or load less the zero, with start
/// and peak of the pulse marked. Zoomed in on the pulse, or the whole block. Loads in lbf or kN.
Plot LoadDropPlot(const DropRecord& drop, LoadCurve curve, bool zoomedIn, bool englishUnits);

}  // namespace bellmark
