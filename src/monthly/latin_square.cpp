#include "monthly/latin_square.h"

#include <algorithm>
#include <stdexcept>

#include "monthly/rotation.h"

namespace bellmark {

namespace {

/// Sums over the same readings, sorted in each of the four ways.
struct Sums {
    std::vector<GroupSums> sensors;
    std::vector<GroupSums> sets;
    std::vector<GroupSums> positions;
    GroupSums all;
};

void RefuseOtherDrops(std::span<const std::span<const double>> readings, int dropsPerSet) {
    const bool isSquare = dropsPerSet > 0 && std::all_of(readings.begin(), readings.end(), [&](const auto& sensor) {
                              return sensor.size() == readings.size() * static_cast<std::size_t>(dropsPerSet);
                          });
    if (!isSquare) throw std::invalid_argument("a Latin square needs as many sets of drops as sensors");
}

Sums SumsOf(std::span<const std::span<const double>> readings, std::size_t dropsPerSet) {
    const std::size_t sensors = readings.size();
    const GroupSums empty{readings.front().front()};
    const std::vector<GroupSums> groups(sensors, empty);
    Sums sums{groups, groups, groups, empty};
    for (std::size_t s = 0; s < sensors; ++s) {
        for (std::size_t drop = 0; drop < readings[s].size(); ++drop) {
            const std::size_t set = drop / dropsPerSet;
            const double reading = readings[s][drop];
            for (GroupSums* group :
                 {&sums.sensors[s], &sums.sets[set], &sums.positions[PositionOf(s, set, sensors)], &sums.all})
                group->Add(reading);
        }
    }
    return sums;
}

/// A sum of squares is not below 0: what is comes from rounding.
double SumOfSquares(const std::vector<GroupSums>& groups, double correction) {
    double sum = 0;
    for (const GroupSums& group : groups) sum += group.SquareOfSum();
    return std::max(sum - correction, 0.0);
}

std::vector<ReadingGroup> GroupsOf(const std::vector<GroupSums>& sums) {
    std::vector<ReadingGroup> groups;
    for (const GroupSums& sum : sums) groups.push_back(sum.Group());
    return groups;
}

}  // namespace

LatinSquareAnalysis AnalyseLatinSquare(std::span<const std::span<const double>> readings, int dropsPerSet) {
    RefuseOtherDrops(readings, dropsPerSet);
    LatinSquareAnalysis result;
    result.dropsPerSet = dropsPerSet;
    if (readings.empty()) return result;
    const Sums sums = SumsOf(readings, static_cast<std::size_t>(dropsPerSet));
    // Each from its own readings: the average of a dead sensor is exactly 0.
    for (const auto& sensor : readings) result.sensors.push_back(GroupOf(sensor));
    result.sets = GroupsOf(sums.sets);
    result.positions = GroupsOf(sums.positions);
    result.all = sums.all.Group();
    const double correction = sums.all.SquareOfSum();
    result.SSSet = SumOfSquares(sums.sets, correction);
    result.SSPosition = SumOfSquares(sums.positions, correction);
    result.SSSensor = SumOfSquares(sums.sensors, correction);
    result.SSTotal = std::max(sums.all.sumOfSquares - correction, 0.0);
    return result;
}

VarianceTable LatinSquareTable(const LatinSquareAnalysis& analysis, const AnalysisWarning& warn) {
    const int sensors = static_cast<int>(analysis.sensors.size());
    return CompareSources({{"Set", analysis.SSSet, sensors - 1},
                           {"Position", analysis.SSPosition, sensors - 1},
                           {"Sensor", analysis.SSSensor, sensors - 1}},
                          {"TOTAL", analysis.SSTotal, analysis.dropsPerSet * sensors * sensors - 1},
                          ProbabilityDegrees::OfError, warn);
}

double CoefficientOfVariation(const ReadingGroup& group) {
    return group.average == 0 ? 0 : 100 * group.stdDev / group.average;
}

}  // namespace bellmark
