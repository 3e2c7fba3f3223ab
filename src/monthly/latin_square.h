#pragma once

#include <span>
#include <vector>

#include "analysis/reading_group.h"
#include "analysis/variance_table.h"

/// Analysis of variance of sensors that rotate through the positions of a stand. Numbers in, numbers out.
namespace bellmark {

/// Averages, deviations and sums of squares about the grand mean, in the unit of the readings and in its square. There
/// are as many sets and positions as sensors.
struct LatinSquareAnalysis {
    std::vector<ReadingGroup> sensors;
    std::vector<ReadingGroup> sets;
    std::vector<ReadingGroup> positions;
    ReadingGroup all;
    int dropsPerSet = 0;
    double SSSet = 0;
    double SSPosition = 0;
    double SSSensor = 0;
    double SSTotal = 0;
};

/// readings: of each of N sensors its N x dropsPerSet drops in their order, a set after the other; the sensors stand as
/// in rotation.h. Other numbers of drops throw std::invalid_argument. Without readings everything is 0.
/// Checked against the rocket propellants of Montgomery, Design and Analysis of Experiments (Latin square of five).
LatinSquareAnalysis AnalyseLatinSquare(std::span<const std::span<const double>> readings, int dropsPerSet);

/// The analysis as a table with the rows "Set", "Position", "Sensor", "Error", "TOTAL". Degrees of freedom: N - 1 of
/// each source, dropsPerSet x N x N - 1 of the total. P takes the error's as its second.
VarianceTable LatinSquareTable(const LatinSquareAnalysis& analysis, const AnalysisWarning& warn);

/// Places of the sources in the table.
namespace latin_square {
inline constexpr std::size_t set = 0;
inline constexpr std::size_t position = 1;
inline constexpr std::size_t sensor = 2;
inline constexpr std::size_t error = 3;
inline constexpr std::size_t total = 4;
}  // namespace latin_square

/// 100 x standard deviation / average, percent; 0 for an average of 0.
double CoefficientOfVariation(const ReadingGroup& group);

}  // namespace bellmark
