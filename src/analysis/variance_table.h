#pragma once

#include <optional>
#include <string>
#include <vector>

#include "analysis/analysis.h"

/// Tables of an analysis of variance, as plain data. Sums of squares and mean squares are in the squared unit of the
/// values.
namespace bellmark {

/// A number that does not apply to the row is empty.
struct VarianceRow {
    std::string source;
    double sumOfSquares = 0;
    std::optional<int> degreesOfFreedom;
    std::optional<double> meanSquare;
    std::optional<double> F;
    std::optional<double> P;  ///< probability of such an F by chance, 0 to 1
};

struct VarianceTable {
    std::vector<VarianceRow> rows;  ///< the sources, the error, the total
    double standardError = 0;       ///< square root of the error's mean square, in the unit of the values
};

struct VarianceSource {
    std::string name;
    double sumOfSquares = 0;
    int degreesOfFreedom = 0;
};

/// Which degrees of freedom P takes as its second.
enum class ProbabilityDegrees { OfError, OfTotal };

/// True for a sum of squares below 1e-12 of the total, which comes from rounding alone.
bool IsRounding(double sumOfSquares, double total);

/// Compares each source with the error, which is the total less the sources. An error from rounding alone counts as 0;
/// there is then no F and no P. A source or error without degrees of freedom has no mean square.
VarianceTable CompareSources(const std::vector<VarianceSource>& sources, const VarianceSource& total,
                             ProbabilityDegrees degrees, const AnalysisWarning& warn);

}  // namespace bellmark
