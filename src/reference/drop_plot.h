#pragma once

#include "controls/picture.h"
#include "reference/reference_instrument.h"
#include "run/drop_record.h"

namespace bellmark {

/// The plot of a load cell drop: volts after the shunt correction, total load, or load less the zero, in the order of
/// the curves, with start and peak of the pulse marked. Zoomed in on the pulse, or the whole block. Loads in lbf or kN.
Plot LoadDropPlot(const DropRecord& drop, DropCurve curve, bool zoomedIn, bool englishUnits);

/// The plot of an accelerometer drop: acceleration less the baseline in g, velocity in mils/s or microns/s, deflection
/// in mils or microns, moving standard deviation in g; with fulcrum, start and peak of the pulse marked.
Plot AccelDropPlot(const DropRecord& drop, DropCurve curve, bool zoomedIn, bool englishUnits);

}  // namespace bellmark
