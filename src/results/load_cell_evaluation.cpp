#include "results/load_cell_evaluation.h"

#include <cmath>

#include "analysis/analysis.h"
#include "analysis/limits.h"
#include "platform/format.h"

namespace bellmark {

namespace {

constexpr const char* spreadAdvice =
    "\r\n     Perform an additional Load Cell Trial or Delete any erroneous trials.\r\n";

/// How the spread of the trials fails; empty when they agree.
std::string SpreadFailure(std::span<const double> gains, double sum, double sumOfSquares) {
    if (gains.size() == 2) {
        if (!ExceedsLimit(std::abs(gains[0] - gains[1]), loadCellLimits::largestSpread)) return {};
        return std::string("Gain difference between Trial 1 and 2 is greater than 0.003.") + spreadAdvice;
    }
    const double deviation = StdDev(sum, sumOfSquares, static_cast<int>(gains.size()));
    if (!ExceedsLimit(deviation, loadCellLimits::largestSpread)) return {};
    return "Standard Deviation > 0.003 (= " + Format(deviation, "#0.0000") + ")." + spreadAdvice;
}

}  // namespace

std::optional<double> GainChange(double gain, double initialGain) {
    if (initialGain == 0) return {};
    return (gain - initialGain) / initialGain;
}

LoadCellEvaluation EvaluateLoadCell(std::span<const double> gains, double initialGain) {
    LoadCellEvaluation result;
    if (gains.size() < static_cast<std::size_t>(fewestLoadCellTrials)) {
        result.message = "Need a minimum of 2 load cell trials.";
        return result;
    }
    double sum = 0;
    double sumOfSquares = 0;
    for (const double gain : gains) {
        sum += gain;
        sumOfSquares += gain * gain;
    }
    result.finalGain = sum / static_cast<double>(gains.size());
    result.finalChange = GainChange(result.finalGain, initialGain);

    result.message = SpreadFailure(gains, sum, sumOfSquares);
    result.isRepeatable = result.message.empty();
    const bool isTooLarge = ExceedsLimit(result.finalGain, loadCellLimits::greatestGain);
    const bool isTooSmall = ExceedsLimit(loadCellLimits::smallestGain, result.finalGain);
    result.isGainWithinLimits = !isTooLarge && !isTooSmall;
    if (isTooLarge) result.message += "     Final Gain larger than 1.02\r\n";
    if (isTooSmall) result.message += "     Final Gain smaller than 0.98\r\n";
    result.isChangeWithinLimit =
        result.finalChange && !ExceedsLimit(std::abs(*result.finalChange), loadCellLimits::largestChange);
    if (!result.isChangeWithinLimit) result.message += "     Percent change is greater than 1.0%\r\n";
    return result;
}

}  // namespace bellmark
