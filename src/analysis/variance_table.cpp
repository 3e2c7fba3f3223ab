#include "analysis/variance_table.h"

#include <cmath>

namespace bellmark {

namespace {

VarianceRow RowOf(const VarianceSource& source) {
    VarianceRow row;
    row.source = source.name;
    row.sumOfSquares = source.sumOfSquares;
    row.degreesOfFreedom = source.degreesOfFreedom;
    if (source.degreesOfFreedom > 0) row.meanSquare = source.sumOfSquares / source.degreesOfFreedom;
    return row;
}

VarianceSource ErrorOf(const std::vector<VarianceSource>& sources, const VarianceSource& total) {
    VarianceSource error{"Error", total.sumOfSquares, total.degreesOfFreedom};
    for (const VarianceSource& source : sources) {
        error.sumOfSquares -= source.sumOfSquares;
        error.degreesOfFreedom -= source.degreesOfFreedom;
    }
    if (IsRounding(error.sumOfSquares, total.sumOfSquares)) error.sumOfSquares = 0;
    return error;
}

}  // namespace

bool IsRounding(double sumOfSquares, double total) {
    constexpr double roundingShare = 1e-12;
    return !(sumOfSquares > roundingShare * total);
}

VarianceTable CompareSources(const std::vector<VarianceSource>& sources, const VarianceSource& total,
                             ProbabilityDegrees degrees, const AnalysisWarning& warn) {
    const VarianceRow error = RowOf(ErrorOf(sources, total));
    const double errorMeanSquare = error.meanSquare.value_or(0);
    const int secondDegrees =
        degrees == ProbabilityDegrees::OfTotal ? total.degreesOfFreedom : error.degreesOfFreedom.value_or(0);
    VarianceTable table;
    for (const VarianceSource& source : sources) {
        VarianceRow row = RowOf(source);
        if (row.meanSquare && errorMeanSquare > 0) {
            row.F = *row.meanSquare / errorMeanSquare;
            row.P = FProbability(source.degreesOfFreedom, secondDegrees, *row.F, warn);
        }
        table.rows.push_back(row);
    }
    table.rows.push_back(error);
    table.rows.push_back(RowOf(total));
    table.standardError = std::sqrt(errorMeanSquare);
    return table;
}

}  // namespace bellmark
