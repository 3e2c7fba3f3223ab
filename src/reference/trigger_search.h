#pragma once

#include <optional>
#include <vector>

#include "run/drop_record.h"

/// The two set-up values that are measured on the FWD in hand: trigger level and number of drops. Pure calculations.
namespace bellmark {

/// What the analysis finds at one trigger level.
struct TriggerLevelResult {
    double level = 0;        ///< g
    double peakMicrons = 0;  ///< -1 where the block cannot be integrated
    int peakIndex = 0;
    int startPulseIndex = 0;
    double riseTime = 0;  ///< ms
    bool good = false;    ///< peak, its index and the rise time are those of the level in force
};

/// The band of trigger levels that lead to the same pulse, g.
struct TriggerBand {
    double lowerBound = 0.05;
    double upperBound = 2;
    double newTrigger = 0;                   ///< its middle, two decimals
    std::vector<TriggerLevelResult> levels;  ///< 0.02 to 2.0 in steps of 0.02
};

/// Repeats the analysis of the drop at each trigger level and compares with what the record holds of the level in
/// force. The first bad level above that ends the band; one below narrows it until a good level follows. drop: as
/// AnalyzeAccelSamples left it. Without a good level, the bounds are 0.05 and what the bad levels left.
TriggerBand DetermineTrigger(const DropRecord& drop);

/// Fewest drops a height, from 4 to 10, that keep the error of the gain below 0.3 %; raised to 5, and to 6 for three
/// heights. Nothing when ten are too few. Peaks between the highest and the lowest height are taken to lie on a
/// straight line. highPeak, lowPeak: microns.
std::optional<int> MinimumNumberOfDrops(double highPeak, double lowPeak, int numberLoadLevels);

}  // namespace bellmark
