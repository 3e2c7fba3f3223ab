#pragma once

#include "analysis/limits.h"
#include "controls/color.h"

namespace bellmark {

/// What the standard error of an adjustment factor is shown on: too large are those that do not even round to the limit
/// of 0.002 (AASHTO R32).
constexpr Color StdErrorColor(double stdErrSlope) {
    constexpr double largest = 0.002049;
    return ExceedsLimit(stdErrSlope, largest) ? colors::mustBeUpdated : colors::passed;
}

}  // namespace bellmark
