#pragma once

#include <string>
#include <vector>

namespace bellmark {

struct CalibrationRun;
enum class Make;

/// One sensor's final gain against the first two acceptance criteria (AASHTO R32): the gain itself, and its change from
/// the initial one. The third, the historical trend, is left to the operator.
struct SensorCriteria {
    bool isGainTooLarge = false;
    bool isGainTooSmall = false;
    bool isChangeTooLarge = false;
    bool FailsGain() const { return isGainTooLarge || isGainTooSmall; }
    /// 1 passes both, 2 fails one of them, 3 fails both.
    int Status() const { return 1 + (FailsGain() ? 1 : 0) + (isChangeTooLarge ? 1 : 0); }
};

/// Judgement of the final gains of all sensors. It is advice; the operator decides.
struct SensorEvaluation {
    std::vector<SensorCriteria> sensors;
    std::string limits;   ///< one line per sensor and limit exceeded, repeated as often as it occurs
    std::string message;  ///< lists sensors that fail both criteria; failing only one counts as passing
};

/// Limits of a final gain, and of its change as a fraction of the initial gain (AASHTO R32).
struct FinalGainLimits {
    double smallest = 0;
    double greatest = 0;
    double largestChange = 0;
};
/// Carl Bro gains have a scale of their own.
FinalGainLimits LimitsOfFinalGain(Make make);

/// The gain must lie within 0.98 and 1.02, or within 10.1 and 11.5 for a Carl Bro, and its change within 1 % of the
/// initial gain. An unknown change counts as too large.
SensorEvaluation EvaluateSensors(const CalibrationRun& run);

}  // namespace bellmark
