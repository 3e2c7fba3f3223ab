#include "monthly/critical_values.h"

#include <algorithm>
#include <array>
#include <boost/math/distributions/fisher_f.hpp>
#include <cmath>
#include <optional>
#include <stdexcept>

namespace bellmark {

namespace {

struct FixedRow {
    int sensors;
    double F;
    std::optional<double> CochranCritical;
};

constexpr FixedRow rowOfNine{9, 1.96278, 0.1792};
constexpr std::array fixedRows{
    FixedRow{6, 2.5, {}},      FixedRow{7, 2.13885, 0.2326}, FixedRow{8, 2.04037, {}}, rowOfNine,
    FixedRow{10, 1.89971, {}}, FixedRow{11, 1.84719, {}},    FixedRow{12, 1.8026, {}}};

}  // namespace

CriticalValues FixedCriticalValues(int sensors, double cochranBefore) {
    const auto* row = std::find_if(fixedRows.begin(), fixedRows.end(),
                                   [&](const FixedRow& fixed) { return fixed.sensors == sensors; });
    const FixedRow& found = row == fixedRows.end() ? rowOfNine : *row;
    return {found.F, found.CochranCritical.value_or(cochranBefore)};
}

double ExactCriticalF(int df1, int df2, double alpha) {
    const boost::math::fisher_f_distribution<double> distribution(df1, df2);
    return boost::math::quantile(boost::math::complement(distribution, alpha));
}

double ExactCriticalC(int groups, int readingsInGroup, double alpha) {
    if (groups < 2 || readingsInGroup < 2) throw std::domain_error("Cochran's C needs two groups of two readings");
    const int others = groups - 1;
    const int degrees = readingsInGroup - 1;
    return 1 / (1 + others / ExactCriticalF(degrees, others * degrees, alpha / groups));
}

CriticalValues ExactCriticalValues(int sensors, int dropsPerSet) {
    const int errorDegrees = dropsPerSet * sensors * sensors - 1 - 3 * (sensors - 1);
    return {ExactCriticalF(sensors - 1, errorDegrees), ExactCriticalC(sensors, dropsPerSet * sensors)};
}

bool DiffersFromExact(double fixed, double exact) {
    constexpr double rounding = 0.0005;
    return std::abs(fixed - exact) > rounding;
}

}  // namespace bellmark
