#pragma once

#include <span>

#include "analysis/analysis.h"

namespace bellmark {

/// Mean and sample standard deviation, in the unit of the readings.
struct ReadingGroup {
    double average = 0;
    double stdDev = 0;
};

/// Sums of a group of readings as they come in, each less the origin: an origin near the readings keeps their squares
/// from cancelling.
struct GroupSums {
    double origin = 0;
    double sum = 0;
    double sumOfSquares = 0;
    int count = 0;

    void Add(double value) {
        sum += value - origin;
        sumOfSquares += (value - origin) * (value - origin);
        ++count;
    }
    ReadingGroup Group() const {
        return count > 0 ? ReadingGroup{origin + sum / count, StdDev(sum, sumOfSquares, count)} : ReadingGroup{};
    }
    /// sum² / count: what the group adds to a sum of squares between groups.
    double SquareOfSum() const { return count > 0 ? sum * sum / count : 0; }
};

/// With the first value as origin: equal values give exactly that value and no deviation.
inline ReadingGroup GroupOf(std::span<const double> values) {
    GroupSums sums{values.empty() ? 0 : values.front()};
    for (const double value : values) sums.Add(value);
    return sums.Group();
}

}  // namespace bellmark
