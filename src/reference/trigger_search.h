#pragma once

#include <optional>
#include <vector>

#include "run/drop_record.h"

/// The two set-up values that are measured on the FWD itself: trigger level and number of drops. Pure calculations.
namespace bellmark {

/// Result of the analysis at one trigger level.
struct TriggerLevelResult {
    double level = 0;        ///< g
    double peakMicrons = 0;  ///< -1 when the block cannot be integrated
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

/// Repeats the analysis of the drop at each trigger level and compares it with the record's results for the level in
/// force. The first bad level above that one ends the band; one below it narrows the band until a good level follows.
/// drop: after AnalyzeAccelSamples. Without a good level, the bounds are 0.05 and what the bad levels left.
TriggerBand DetermineTrigger(const DropRecord& drop);

/// Fewest drops per height, from 4 to 10, that keep the error of the gain below 0.3 %; raised to 5, and to 6 for three
/// heights. Nothing when ten are too few. Peaks between the highest and the lowest height are assumed to lie on a
/// straight line. highPeak, lowPeak: microns.
std::optional<int> MinimumNumberOfDrops(double highPeak, double lowPeak, int numberLoadLevels);

}  // namespace bellmark
