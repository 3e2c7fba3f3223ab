#pragma once

#include <optional>
#include <string>
#include <vector>

#include "analysis/analysis.h"

/// Tables of an analysis of variance, as plain data. Sums of squares and mean squares are in the squared unit of the
/// values.
namespace bellmark {

/// Where a row has no such number, there is none.
struct VarianceRow {
    std::string source;
    double sumOfSquares = 0;
    std::optional<int> degreesOfFreedom;
    std::optional<double> meanSquare;
    std::optional<double> F;
    std::optional<double> P;  ///< that such an F comes by chance, 0 to 1
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

/// What P takes as its second degrees of freedom.
enum class ProbabilityDegrees { OfError, OfTotal };

/// True for what is left of a sum of squares where rounding alone has made it: below 1e-12 of the total.
bool IsRounding(double sumOfSquares, double total);

/// Sets each source against the error, which is what the total has and the sources have not. An error that is rounding
/// alone counts as 0; then there is no F and no P. A source or error without degrees of freedom has no mean square.
VarianceTable CompareSources(const std::vector<VarianceSource>& sources, const VarianceSource& total,
                             ProbabilityDegrees degrees, const AnalysisWarning& warn);

}  // namespace bellmark
