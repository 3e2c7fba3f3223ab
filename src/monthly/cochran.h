#pragma once

#include <cstddef>
#include <optional>
#include <span>

#include "analysis/reading_group.h"

namespace bellmark {

struct CochranResult {
    std::optional<double> C;  ///< largest variance over the sum of all; nothing when none of the sensors varies
    std::size_t sensor = 0;   ///< index of the one with the largest variance, the first of equal ones
};

/// Is the variance of one sensor too large among the others'? (Cochran, Annals of Eugenics 11, 1941.)
CochranResult CochranTest(std::span<const ReadingGroup> sensors);

}  // namespace bellmark
