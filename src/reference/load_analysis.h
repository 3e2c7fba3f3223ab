#pragma once

#include <array>

#include "run/drop_record.h"

/// Analysis of a load cell drop: pure calculations over the drop record.
namespace bellmark {

struct CenterConfig;

struct LoadDropFindings {
    bool peakTooHigh = false;  ///< above the range of the reference load cell
    double noise = 0;          ///< range of the total load in the zero window, pounds
    /// Mean of the zeroed load over the ten samples before the pulse, pounds. Rounded to one decimal for English units
    /// and to three otherwise, though it is in pounds either way.
    double loadAtStart = 0;
    /// No pulse was found: the zeroed peak is 0, or the pulse begins too near the start of the block. The peaks are
    /// then 0.
    bool noPulse = false;
    /// The peak is below the trigger level, so that the drop could not have started a capture: noise, or a cell
    /// connected the wrong way round.
    bool belowTrigger = false;
};

/// Converts the block in RawVolts[0..NumSamples] to load, and finds peak, zero and start of the pulse. Time of sample i
/// is i / 15000 s. Fills all load cell members of the record; TriggerLevel and ZeroNoiseLimit come from the center and
/// the procedure. The load cell's polynomial is that of its calibration certificate (ASTM E74), the procedure AASHTO
/// R32.
LoadDropFindings AnalyzeLoadSamples(DropRecord& drop, const CenterConfig& center, bool englishUnits);

/// The load trigger: true once eleven consecutive samples are above the trigger level. One call per sample. volts: the
/// sample as captured; the trigger uses neither the shunt multiplier nor a change of units.
bool CheckLoadTrigger(DropRecord& drop, const std::array<double, 5>& coefficients, double volts);

}  // namespace bellmark
