#pragma once

#include <optional>
#include <span>
#include <string>

/// Judges the FWD's load cell by its reference trials. The judgement is advice; the operator decides.
namespace bellmark {

inline constexpr int fewestLoadCellTrials = 2;

/// Limits for a calibration of the load cell (AASHTO R32).
namespace loadCellLimits {
inline constexpr double largestSpread = 0.003;  ///< of the trials' gains: difference of two, or standard deviation
inline constexpr double smallestGain = 0.98;
inline constexpr double greatestGain = 1.02;
inline constexpr double largestChange = 0.01;  ///< of the initial gain, as a fraction
}  // namespace loadCellLimits

/// (gain - initialGain) / initialGain; nothing when the FWD came without a gain.
std::optional<double> GainChange(double gain, double initialGain);

struct LoadCellEvaluation {
    double finalGain = 0;               ///< mean of the trials
    std::optional<double> finalChange;  ///< as a fraction
    bool isRepeatable = false;
    bool isGainWithinLimits = false;
    bool isChangeWithinLimit = false;
    bool IsPassed() const { return isRepeatable && isGainWithinLimits && isChangeWithinLimit; }
    std::string
        message;  ///< one line per failed criterion, or that there are too few trials; empty when nothing failed
};

/// gains: of each trial. The trials agree when two differ by at most 0.003, three or more have a sample standard
/// deviation of at most 0.003. The final gain must lie within 0.98 and 1.02 and within 1.0 % of the initial one
/// (AASHTO R32). An unknown change counts as too large.
LoadCellEvaluation EvaluateLoadCell(std::span<const double> gains, double initialGain);

}  // namespace bellmark
