// Statistics and judgement of the sensors' reference trials.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>

#include "run/reference_trials.h"

namespace bellmark {
namespace {

struct Expected {
    double change, sumOfDifferences, rms, factor, average, deviation, trialChange;
    double interim, interimDeviation, interimChange, lastMean, lastChange, lastDifference, lastDeviation;
};
const Expected expectedRuns[] = {
#include "reference_trials_expected.inc"
};

/// The generator of recompute_reference_trials.py.
struct Shares {
    std::uint64_t state = 20120309;
    double operator()() {
        state = (state * 1103515245 + 12345) % (1ULL << 31);
        return static_cast<double>(state) / static_cast<double>(1ULL << 31);
    }
};

CalibrationRun MadeRun(int number, Shares& share) {
    CalibrationRun run;
    run.NumberSensors = 5 + number % 8;
    run.RefTrials = number % 3 == 2 ? 4 : 2;
    const double scale = number % 5 == 4 ? 10.8 : 1.0;
    for (int s = 0; s < run.NumberSensors; ++s) {
        SensorCalRecord& sensor = run.Sensor.at(static_cast<std::size_t>(s));
        sensor.InitialGain = scale * (0.98 + 0.04 * share());
        for (int t = 0; t < run.RefTrials; ++t) {
            TrialRecord& trial = sensor.RefTrial.at(static_cast<std::size_t>(t));
            trial.Gain = scale * (0.98 + 0.04 * share());
            trial.AdjFactor = trial.Gain / scale;
        }
    }
    return run;
}

TEST(ReferenceTrials, AgreeWithExactArithmetic) {
    Shares share;
    int number = 0;
    for (const Expected& expected : expectedRuns) {
        SCOPED_TRACE(number);
        CalibrationRun run = MadeRun(number++, share);
        const ReferenceStatistics stats = CalcRefStats(run, run.RefTrials);
        JudgeReferenceTrials(run, run.RefTrials);
        const auto last = static_cast<std::size_t>(run.NumberSensors - 1);
        const auto trial = static_cast<std::size_t>(run.RefTrials - 1);
        // Means cancel to 1e-12; deviations come from sums of squares, which cancel to about 1e-7 of themselves.
        const auto expectNear = [](double found, double wanted, double within) { EXPECT_NEAR(found, wanted, within); };
        expectNear(stats.AvgChange, expected.change, 1e-12);
        expectNear(stats.SumPairDifference, expected.sumOfDifferences, 1e-12);
        expectNear(stats.RMSDifference, expected.rms, 1e-12);
        expectNear(stats.AvgAdjFactor[trial], expected.factor, 1e-12);
        expectNear(stats.AvgGain[trial], expected.average, 1e-12);
        expectNear(run.RefTrial[trial].Avg, expected.average, 1e-12);
        expectNear(run.RefTrial[trial].StdDev, expected.deviation, 1e-9);
        expectNear(run.RefTrial[trial].Change, expected.trialChange, 1e-12);
        expectNear(run.RefCalAvg, expected.interim, 1e-12);
        expectNear(run.RefCalStdDev, expected.interimDeviation, 1e-9);
        expectNear(run.RefCalChange, expected.interimChange, 1e-12);
        expectNear(run.Sensor[last].InterimGain, expected.lastMean, 1e-12);
        expectNear(stats.SensorMeanGain[last], expected.lastMean, 1e-12);
        expectNear(stats.SensorChange[last], expected.lastChange, 1e-12);
        expectNear(stats.TrialPairDifference[last], expected.lastDifference, 1e-12);
        expectNear(stats.SensorStdDev[last], expected.lastDeviation, 1e-7);
    }
    EXPECT_EQ(number, 50);
}

/// Two sensors; the second one has the given gains.
CalibrationRun RunOfTwo(const std::vector<double>& gains) {
    CalibrationRun run;
    run.NumberSensors = 2;
    run.RefTrials = static_cast<int>(gains.size());
    for (std::size_t s = 0; s < 2; ++s) {
        run.Sensor[s].SerialNumber = s == 0 ? "D1" : "D2";
        run.Sensor[s].InitialGain = 1;
        for (std::size_t t = 0; t < gains.size(); ++t) run.Sensor[s].RefTrial[t].Gain = s == 0 ? 1 : gains[t];
    }
    return run;
}

constexpr const char* met = "Reference Trial Acceptance Criteria Met.";
constexpr const char* failed =
    "One or more sensors has a difference in the reference gain factor between the two trials of more than 0.005.\r\n"
    "Please perform two more reference calibrations.";
constexpr const char* missing = "Missing calibration; a calibration must be done for each stand position.";

TEST(ReferenceTrials, AreJudgedOnBothSidesOfTheLimit) {
    const struct {
        std::vector<double> gains;
        const char* text;
    } rows[] = {
        {{1.0}, "At least 2 reference calibrations must be done."},
        {{1.0, 1.005}, met},
        {{1.005, 1.0}, met},
        {{0.995, 1.0}, met},
        {{1.0, 1.0050000005}, met},  // equal to the limit within the precision of a double
        {{1.0, 1.005000002}, failed},
        {{1.0, 1.0051}, failed},
        {{1.0051, 1.0}, failed},
        {{1.0, 1.0051, 1.0}, missing},
        {{1.0, 1.01, 1.01, 1.0}, met},  // differences of the two pairs cancel
        {{1.0, 1.0, 1.0, 1.0099}, met},
        {{1.0, 1.0, 1.0, 1.0101}, failed},
    };
    for (const auto& [gains, text] : rows) {
        CalibrationRun run = RunOfTwo(gains);
        JudgeReferenceTrials(run, run.RefTrials);
        EXPECT_EQ(run.SensorRefMessage[0], text) << testing::PrintToString(gains);
        EXPECT_EQ(run.SensorRefCalGood, text == met);
        run.SensorRefCalComplete = true;
        JudgeReferenceTrials(run, run.RefTrials);
        EXPECT_EQ(run.SensorRefMessage[0].starts_with("Reference Calibrations Accepted.\r\n"),
                  text == met || text == failed);
    }
    CalibrationRun run = RunOfTwo({});
    JudgeReferenceTrials(run, 0);
    EXPECT_EQ(ReferenceMessages(run), "");
}

TEST(ReferenceTrials, ListTheSensorsWithALargeStandardError) {
    CalibrationRun run = RunOfTwo({1, 1});
    run.Sensor[0].RefTrial[1].StdErrAdjFactor = 0.00204;
    run.Sensor[1].RefTrial[1].StdErrAdjFactor = 0.00205;
    RefCalcStats(run, 1, 2);
    EXPECT_EQ(run.SensorRefMessage[2],
              "     Reference Trial 2\r\n\r\n          Sensor with a Standard Error of Slope > 0.002.\r\n"
              "            Sensor D2: SE = 0.0021\r\n");
    run.Sensor[0].RefTrial[1].StdErrAdjFactor = 0.01;
    RefCalcStats(run, 1, 2);
    EXPECT_EQ(run.SensorRefMessage[2],
              "     Reference Trial 2\r\n\r\n          Sensors with a Standard Error of Slope > 0.002.\r\n"
              "            Sensor D1: SE = 0.0100\r\n            Sensor D2: SE = 0.0021\r\n");
    EXPECT_EQ(run.SensorRefMessage[1], "");
}

TEST(ReferenceTrials, KeepTheGainsOfThePairsThatAreComplete) {
    CalibrationRun run = RunOfTwo({1.0, 1.002, 1.1, 1.1});
    JudgeReferenceTrials(run, 4);
    EXPECT_NEAR(run.Sensor[1].InterimGain, 1.0505, 1e-12);
    JudgeReferenceTrials(run, 3);
    EXPECT_NEAR(run.Sensor[1].InterimGain, 1.001, 1e-12);
    EXPECT_EQ(run.RefTrial[3].Avg, 0);
    JudgeReferenceTrials(run, 1);
    EXPECT_EQ(run.Sensor[1].InterimGain, 0);
    EXPECT_EQ(run.RefCalAvg, 0);
    // Without initial gains there is no change to compute, and no division by zero.
    for (SensorCalRecord& sensor : run.Sensor) sensor.InitialGain = 0;
    JudgeReferenceTrials(run, 2);
    EXPECT_EQ(run.RefCalChange, 0);
    EXPECT_EQ(CalcRefStats(run, 2).AvgChange, 0);
}

}  // namespace
}  // namespace bellmark
