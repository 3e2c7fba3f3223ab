#include "monthly/cochran.h"

#include <algorithm>

namespace bellmark {

CochranResult CochranTest(std::span<const ReadingGroup> sensors) {
    CochranResult result;
    double largest = 0, sum = 0;
    for (std::size_t s = 0; s < sensors.size(); ++s) {
        const double variance = sensors[s].stdDev * sensors[s].stdDev;
        if (variance > largest) result.sensor = s;
        largest = std::max(largest, variance);
        sum += variance;
    }
    if (sum > 0) result.C = largest / sum;
    return result;
}

}  // namespace bellmark
