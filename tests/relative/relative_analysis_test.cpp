// The analyses of the annual relative calibration against exact fractions, and against a published experiment.
#include "relative/relative_analysis.h"

#include <gtest/gtest.h>

#include <cmath>

#include "relative/relative_readings.h"
#include "relative/relative_trial.h"
#include "run/calibration_run.h"

namespace bellmark {
namespace {

void FailOnWarning(const char* text) {
    ADD_FAILURE() << text;
}

struct ExpectedCase {
    double sensorAverage, sensorDeviation, setAverage, setDeviation, average, deviation, chiSquared;
    double SSSet, SSSensor, SSTotal, FSet, FSensor, PSet, PSensor, firstFinalGain;
    double finalTotal, finalTrials, finalSensors, finalPositions, finalF, finalP;
};

// Computed in exact fractions by recompute_relative.py.
constexpr ExpectedCase expectedCases[] = {
#include "relative_expected.inc"
};

/// The whole numbers of recompute_relative.py.
class Made {
  public:
    explicit Made(std::uint64_t seed) : state_(seed) {}
    int Below(int limit) {
        state_ = state_ * 6364136223846793005U + 1442695040888963407U;
        return static_cast<int>((state_ >> 33) % static_cast<std::uint64_t>(limit));
    }

  private:
    std::uint64_t state_;
};

/// Reads trial for trial, as the operator would, and accepts each. Returns the millionths by which each final gain is
/// then to be made wrong.
std::vector<int> MakeCase(CalibrationRun& run, int number) {
    Made made(static_cast<std::uint64_t>(number) + 1);
    run.EnglishUnits = number % 2 == 1;
    run.NumberSensors = 2 + number % 11;
    const int trials = number % 5 == 4 ? 4 : 2;
    const auto sensors = static_cast<std::size_t>(run.NumberSensors);
    const int base = run.EnglishUnits ? 198000 : 50000;
    const int noise = run.EnglishUnits ? 300 : 90;
    const int spread = 1 + noise * (number % 5) / 6;
    for (std::size_t s = 0; s < sensors; ++s) run.Sensor[s].InterimGain = (9800 + made.Below(400)) / 10000.0;
    std::vector<int> offsets(sensors);
    for (int& offset : offsets) offset = made.Below(spread);
    for (run.RelTrials = 0; run.RelTrials < trials; ++run.RelTrials) {
        const auto trial = static_cast<std::size_t>(run.RelTrials);
        BeginRelativeTrial(run);
        std::array<int, relativeSets> drifts{};
        for (int& drift : drifts) drift = made.Below(spread);
        for (std::size_t s = 0; s < sensors; ++s) {
            for (std::size_t drop = 0; drop < relativeDrops; ++drop) {
                const int reading = base + offsets[s] + drifts[drop / relativeDropsPerSet] + made.Below(noise);
                run.Sensor[s].RelTrial[trial].DropData[drop] = reading / (run.EnglishUnits ? 10000.0 : 100.0);
            }
        }
        DoRelativeDataAnalysis(run);
    }
    SetFinalGains(run);
    std::vector<int> shifts(sensors);
    for (int& shift : shifts) shift = made.Below(200) - 100;
    return shifts;
}

TEST(RelativeAnalysis, AgreesWithASecondImplementationOverFiftyCalibrations) {
    double worstSum = 0, worstProbability = 0;
    const auto sum = [&](double found, double expected) {
        worstSum = std::max(worstSum, std::abs(found / expected - 1));
        EXPECT_NEAR(found / expected, 1, 1e-7);
    };
    const auto probability = [&](double found, double expected) {
        worstProbability = std::max(worstProbability, std::abs(found - expected));
        EXPECT_NEAR(found, expected, 1e-7);
    };
    for (int number = 0; number < static_cast<int>(std::size(expectedCases)); ++number) {
        SCOPED_TRACE(number);
        const ExpectedCase& expected = expectedCases[number];
        CalibrationRun run;
        const std::vector<int> shifts = MakeCase(run, number);
        const RelativeTrialSummary& trial = run.RelTrial[0];
        const RelativeTrialRecord& lastSensor = run.Sensor[shifts.size() - 1].RelTrial[0];
        sum(lastSensor.Average, expected.sensorAverage);
        sum(lastSensor.StdDev, expected.sensorDeviation);
        sum(trial.SetAvg[7], expected.setAverage);
        sum(trial.SetStdDev[7], expected.setDeviation);
        sum(trial.Avg, expected.average);
        sum(trial.StdDev, expected.deviation);
        sum(trial.ChiSq, expected.chiSquared);
        const VarianceTable table = RelativeTrialTable(trial, run.NumberSensors, FailOnWarning);
        sum(table.rows.at(0).sumOfSquares, expected.SSSet);
        sum(table.rows.at(1).sumOfSquares, expected.SSSensor);
        sum(table.rows.at(3).sumOfSquares, expected.SSTotal);
        sum(table.rows.at(0).F.value(), expected.FSet);
        sum(table.rows.at(1).F.value(), expected.FSensor);
        probability(table.rows.at(0).P.value(), expected.PSet);
        probability(table.rows.at(1).P.value(), expected.PSensor);
        EXPECT_NEAR(run.Sensor[0].FinalGain, expected.firstFinalGain, 1e-12);

        for (std::size_t s = 0; s < shifts.size(); ++s) run.Sensor[s].FinalGain *= 1 + shifts[s] / 1e6;
        const auto all = AnalyseAllTrials(run, FailOnWarning);
        ASSERT_TRUE(all);
        sum(all->SSTotal, expected.finalTotal);
        sum(all->SSTrials, expected.finalTrials);
        sum(all->SSSensors, expected.finalSensors);
        sum(all->SSPositions, expected.finalPositions);
        sum(all->F.value(), expected.finalF);
        probability(all->P, expected.finalP);
        EXPECT_STREQ(all->verdict, expected.finalP > 0.05 ? "Sensors are randomly distributed"
                                                          : "At least one sensor is not randomly distibuted");
    }
    RecordProperty("largest relative error of a sum", testing::PrintToString(worstSum));
    RecordProperty("largest error of a probability", testing::PrintToString(worstProbability));
}

// Survival times of animals by treatment and poison: G. E. P. Box and D. R. Cox, "An analysis of transformations",
// J. R. Stat. Soc. B 26 (1964), table 1. The sums of squares are theirs in table 2; without interaction the error is
// 0.8007 + 0.2501.
TEST(RelativeAnalysis, ReproducesAPublishedExperiment) {
    using Times = std::vector<double>;
    const Times treatments[] = {
        {0.31, 0.45, 0.46, 0.43, 0.36, 0.29, 0.40, 0.23, 0.22, 0.21, 0.18, 0.23},
        {0.82, 1.10, 0.88, 0.72, 0.92, 0.61, 0.49, 1.24, 0.30, 0.37, 0.38, 0.29},
        {0.43, 0.45, 0.63, 0.76, 0.44, 0.35, 0.31, 0.40, 0.23, 0.25, 0.24, 0.22},
        {0.45, 0.71, 0.66, 0.62, 0.56, 1.02, 0.71, 0.38, 0.30, 0.36, 0.31, 0.33},
    };
    const std::vector<std::span<const double>> readings(std::begin(treatments), std::end(treatments));
    const TwoWayAnalysis found = AnalyseTwoWay(readings, 4);
    EXPECT_NEAR(found.SSSet, 1.0330, 5e-5) << "poisons";
    EXPECT_NEAR(found.SSSensor, 0.9212, 5e-5) << "treatments";
    const VarianceTable table =
        CompareSources({{"Poisons", found.SSSet, 2}, {"Treatments", found.SSSensor, 3}}, {"Total", found.SSTotal, 47},
                       ProbabilityDegrees::OfError, FailOnWarning);
    EXPECT_NEAR(table.rows[2].sumOfSquares, 0.8007 + 0.2501, 1e-4);
    EXPECT_EQ(table.rows[2].degreesOfFreedom, 42);
    EXPECT_NEAR(table.rows[0].F.value(), 20.64, 0.005);
    EXPECT_NEAR(table.rows[1].F.value(), 12.27, 0.005);
    EXPECT_NEAR(table.standardError, 0.1582, 5e-5);
}

TEST(RelativeAnalysis, NothingIsDividedByZero) {
    CalibrationRun run;
    run.NumberSensors = 3;
    DoRelativeDataAnalysis(run);
    for (const VarianceRow& row : RelativeTrialTable(run.RelTrial[0], 3, FailOnWarning).rows) {
        EXPECT_EQ(row.sumOfSquares, 0);
        EXPECT_FALSE(row.F || row.P);
    }
    // A dead sensor among living ones that all agree.
    for (std::size_t s = 0; s < 2; ++s) {
        run.Sensor[s].InterimGain = 1;
        run.Sensor[s].FinalGain = 1;
        for (std::size_t drop = 0; drop < relativeDrops; ++drop) run.Sensor[s].RelTrial[0].DropData[drop] = 100.1;
    }
    DoRelativeDataAnalysis(run);
    EXPECT_EQ(run.Sensor[2].RelTrial[0].AdjFactor, 0);
    EXPECT_EQ(run.Sensor[2].RelTrial[0].Gain, 0);
    EXPECT_EQ(RelativeTrialTable(run.RelTrial[0], 3, FailOnWarning).standardError, 0) << "rounding is no error";
    EXPECT_FALSE(AnalyseAllTrials(run, FailOnWarning)) << "no trial is accepted";
    run.RelTrials = 2;
    run.Sensor[1].RelTrial[1] = run.Sensor[0].RelTrial[1] = run.Sensor[0].RelTrial[0];
    run.RelTrial[1] = run.RelTrial[0];
    const auto all = AnalyseAllTrials(run, FailOnWarning);
    ASSERT_TRUE(all);
    EXPECT_TRUE(std::isfinite(all->P) && std::isfinite(all->F.value_or(0)));
    // One sensor alone is compared with nobody.
    run.NumberSensors = 1;
    EXPECT_EQ(AnalyseAllTrials(run, FailOnWarning)->P, 1);
    EXPECT_FALSE(RelativeTrialTable(run.RelTrial[0], 1, FailOnWarning).rows[1].meanSquare);
}

TEST(RelativeAnalysis, AStandardErrorOfThreeMicronsIsNotTooLarge) {
    EXPECT_FALSE(InBothUnits(3, false).isTooLarge);
    EXPECT_TRUE(InBothUnits(3.001, false).isTooLarge);
    EXPECT_FALSE(InBothUnits(3 / 25.4, true).isTooLarge);
    EXPECT_NEAR(InBothUnits(0.1, true).microns, 2.54, 1e-12);
    EXPECT_NEAR(InBothUnits(2.54, false).mils, 0.1, 1e-12);
}

TEST(RelativeAnalysis, ReadingsAreNormalisedAndRoundedHalfToEven) {
    EXPECT_EQ(NormalisedReading(500, 1.02, 1, false), 510);
    EXPECT_EQ(NormalisedReading(500, 1.02, 1.02, false), 500);
    EXPECT_EQ(NormalisedReading(0.125, 1, 1, false), 0.12);
    EXPECT_EQ(NormalisedReading(0.375, 1, 1, false), 0.38);
    EXPECT_EQ(NormalisedReading(20.03125, 1, 1, true), 20.0312);
    EXPECT_EQ(NormalisedReading(20, 0, 1, true), 0);
    EXPECT_EQ(NormalisedReading(20, 1, 0, true), 0);
}

}  // namespace
}  // namespace bellmark
