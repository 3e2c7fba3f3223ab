#pragma once

#include "analysis/limits.h"
#include "controls/color.h"

namespace bellmark {

/// Background of the standard error of an adjustment factor. It is too large when it does not even round to the limit
/// of 0.002 (AASHTO R32).
constexpr Color StdErrorColor(double stdErrSlope) {
    constexpr double largest = 0.002049;
    return ExceedsLimit(stdErrSlope, largest) ? colors::mustBeUpdated : colors::passed;
}

}  // namespace bellmark
