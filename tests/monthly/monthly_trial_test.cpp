// Monthly trials, read from documents as the FWD writes them, against exact fractions and published experiments.
#include "monthly/monthly_trial.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "fwd/fwd_peaks.h"
#include "monthly/rotation.h"
#include "pddx/pddx_file.h"
#include "platform/numbers.h"
#include "relative/relative_trial.h"
#include "tests/monthly/monthly_samples.h"

namespace bellmark {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

void FailOnWarning(const char* text) {
    ADD_FAILURE() << text;
}

struct ExpectedTrial {
    double SSSet, SSPosition, SSSensor, SSTotal, FSet, FPosition, FSensor, PSet;
    double lastRatio, firstGain, C, errorMicrons;
    int errorDegrees, worst, isSet, isPosition, isSensor, isExceeded;
    int outOfTolerance, outOf2Percent, differ, toReset, monthlyStep, replacementStep;
};

// Computed in exact fractions by recompute_monthly.py.
constexpr ExpectedTrial expectedTrials[] = {
#include "monthly_expected.inc"
};

/// The whole numbers of recompute_monthly.py.
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

using Readings = std::vector<std::vector<int>>;

/// Of each sensor its drops, in the last decimal of their unit.
Readings MakeReadings(Made& made, int number, std::size_t sensors, const std::vector<int>& offsets) {
    const bool english = number % 2 == 1;
    constexpr std::array noises{1, 1, 4, 30};
    const int noise = (english ? 40 : 100) * noises[static_cast<std::size_t>(number % 4)];
    std::vector<int> sets(sensors), places(sensors);
    for (int& effect : sets) effect = made.Below(1 + noise * (number % 3));
    for (int& effect : places) effect = made.Below(1 + noise * (number / 3 % 2));
    Readings readings(sensors);
    for (std::size_t s = 0; s < sensors; ++s) {
        for (std::size_t drop = 0; drop < sensors * monthlyDropsPerSet; ++drop) {
            const std::size_t set = drop / monthlyDropsPerSet;
            const int scatter = (made.Below(noise) - noise / 2) * (static_cast<int>(s) == number % 7 ? 2 : 1);
            readings[s].push_back((english ? 19800 : 50000) + offsets[s] + sets[set] +
                                  places[PositionOf(s, set, sensors)] + scatter);
        }
    }
    return readings;
}

class Recomputed : public testing::Test {
  protected:
    /// Two trials, as the operator would read and accept them.
    void Run(int number) {
        run_ = {};
        run_.CurrentProcedure = Procedure::MonthlyRelative;
        run_.EnglishUnits = number % 2 == 1;
        const auto sensors = static_cast<std::size_t>(6 + number % 7);
        Made made(static_cast<std::uint64_t>(number) + 1);
        SampleDocument file;
        for (std::size_t s = 0; s < sensors; ++s) file.gains.push_back((9950 + made.Below(100)) / 10000.0);
        constexpr std::array spreads{1, 60, 200, 400, 1500};
        std::vector<int> offsets(sensors);
        for (int trial = 1; trial <= 2; ++trial) {
            if (trial == 1 || number % 3 == 2) {
                for (int& offset : offsets) offset = made.Below(spreads[static_cast<std::size_t>(number % 5)]);
            }
            file.TakeReadings(MakeReadings(made, number, sensors, offsets), run_.EnglishUnits ? 1000 : 100);
            PDDXFile document;
            file.Fill(document);
            ASSERT_EQ(ReadMonthlyTrial(document, run_, "").problem, MonthlyProblem::None);
            Compare(expectedTrials[2 * number + trial - 1], static_cast<std::size_t>(number) % sensors);
        }
    }

    void Compare(const ExpectedTrial& expected, std::size_t replaced) {
        const int trials = run_.RelTrials + 1;
        const MonthlyAnalysis found = AnalyseMonthlyTrial(run_, trials, 0, FailOnWarning);
        const auto trial = static_cast<std::size_t>(run_.RelTrials);
        const auto near = [](double value, double wanted) { EXPECT_NEAR(value / wanted, 1, 1e-7); };
        const auto& rows = found.table.rows;
        near(found.square.SSSet, expected.SSSet);
        near(found.square.SSPosition, expected.SSPosition);
        near(found.square.SSSensor, expected.SSSensor);
        near(found.square.SSTotal, expected.SSTotal);
        near(rows[latin_square::set].F.value(), expected.FSet);
        near(rows[latin_square::position].F.value(), expected.FPosition);
        near(rows[latin_square::sensor].F.value(), expected.FSensor);
        // Own routine of the probability is good to seven digits.
        EXPECT_NEAR(rows[latin_square::set].P.value(), expected.PSet, 3e-7);
        near(run_.Sensor[found.square.sensors.size() - 1].RelTrial[trial].AdjFactor, expected.lastRatio);
        near(run_.Sensor[0].RelTrial[trial].Gain, expected.firstGain);
        near(found.cochran.C.value(), expected.C);
        near(found.standardError.microns, expected.errorMicrons);
        EXPECT_EQ(rows[latin_square::error].degreesOfFreedom, expected.errorDegrees);
        const MonthlyCounts counts = CountMonthlySensors(run_, trials);
        EXPECT_THAT(
            (std::array{static_cast<int>(found.cochran.sensor), int{found.SetIsSignificant},
                        int{found.PositionIsSignificant}, int{found.SensorIsSignificant}, int{found.CochranExceeded},
                        counts.OutOfTolerance, counts.OutOf2Percent, counts.TrialDifferenceFailures,
                        counts.SensorsToReset}),
            ElementsAre(expected.worst, expected.isSet, expected.isPosition, expected.isSensor, expected.isExceeded,
                        expected.outOfTolerance, expected.outOf2Percent, expected.differ, expected.toReset));
        CountRelativeTrial(run_);
        const MonthlyDecision decision = RelativeCalibrationStatus(run_, {});
        EXPECT_EQ(decision.asksForTwoNewTrials ? 252 : decision.step.value(), expected.monthlyStep);
        run_.CurrentProcedure = Procedure::SensorReplacement;
        EXPECT_EQ(RelativeCalibrationStatus(run_, replaced).step, expected.replacementStep);
        run_.CurrentProcedure = Procedure::MonthlyRelative;
    }

    CalibrationRun run_;
};

TEST_F(Recomputed, AHundredTrialsAgreeWithASecondImplementation) {
    for (int number = 0; number < 50; ++number) {
        SCOPED_TRACE(number);
        Run(number);
        if (HasFailure()) return;
    }
}

TEST(LatinSquare, AgreesWithAPublishedExperiment) {
    // Montgomery, Design and Analysis of Experiments, Latin square design: burning rates of rocket propellants. The
    // formulations A to E rotate through batches of raw material (positions) and operators (sets); here by operator.
    const double ofA[] = {24, 30, 26, 27, 36}, ofB[] = {17, 20, 20, 23, 21}, ofC[] = {18, 24, 19, 29, 22};
    const double ofD[] = {26, 38, 30, 24, 31}, ofE[] = {22, 31, 26, 27, 24};
    const std::vector<std::span<const double>> readings{ofA, ofB, ofC, ofD, ofE};
    const LatinSquareAnalysis found = AnalyseLatinSquare(readings, 1);
    EXPECT_DOUBLE_EQ(found.SSPosition, 68);
    EXPECT_DOUBLE_EQ(found.SSSet, 150);
    EXPECT_DOUBLE_EQ(found.SSSensor, 330);
    EXPECT_DOUBLE_EQ(found.SSTotal, 676);
    const VarianceTable table = LatinSquareTable(found, FailOnWarning);
    EXPECT_NEAR(table.rows[latin_square::sensor].F.value(), 7.73, 0.005);
    EXPECT_NEAR(table.rows[latin_square::sensor].P.value(), 0.0025, 0.00005);
    EXPECT_NEAR(table.rows[latin_square::error].meanSquare.value(), 10.67, 0.005);
    EXPECT_THROW(AnalyseLatinSquare(readings, 2), std::invalid_argument);
}

TEST(LatinSquare, RotatesAsTheProcedureTellsIt) {
    for (std::size_t sensors = 6; sensors <= 12; ++sensors) {
        for (std::size_t k = 1; k <= sensors; ++k) {
            for (std::size_t i = 1; i <= sensors; ++i) {
                const std::size_t position = i >= k ? i - k + 1 : sensors - k + 1 + i;
                EXPECT_EQ(PositionOf(i - 1, k - 1, sensors), position - 1);
                EXPECT_EQ(SensorAt(position - 1, k - 1, sensors), i - 1);
            }
        }
    }
    EXPECT_EQ(SensorAt(0, 5, 6), 5U) << "the last of six sets begins with the sixth sensor";
}

TEST(CriticalValues, AgreeWithTheirSources) {
    constexpr struct {
        int sensors;
        double F, C;
    } recomputed[] = {
#include "critical_expected.inc"
    };
    for (const auto& row : recomputed) {
        const CriticalValues exact = ExactCriticalValues(row.sensors, monthlyDropsPerSet);
        EXPECT_NEAR(exact.F / row.F, 1, 1e-9);
        EXPECT_NEAR(exact.CochranCritical / row.C, 1, 1e-9);
    }
    // ISO 5725-2, table of Cochran's test at 5 %: p laboratories of n results.
    constexpr struct {
        int p, n;
        double C;
    } published[] = {{2, 3, 0.975}, {3, 2, 0.967}, {3, 6, 0.707}, {10, 2, 0.602}, {10, 6, 0.303}};
    for (const auto& row : published) EXPECT_NEAR(ExactCriticalC(row.p, row.n), row.C, 0.0005) << row.p;
    EXPECT_THROW(ExactCriticalC(1, 35), std::domain_error);
    EXPECT_THROW(ExactCriticalF(0, 10), std::domain_error);

    constexpr struct {
        int sensors;
        double F, C;  ///< C after a trial with 0.5
        bool FDiffers, CDiffers;
    } fixed[] = {
        {5, 1.96278, 0.1792, true, true}, {6, 2.5, 0.5, true, true},         {7, 2.13885, 0.2326, false, true},
        {8, 2.04037, 0.5, false, true},   {9, 1.96278, 0.1792, false, true}, {10, 1.89971, 0.5, false, true},
        {11, 1.84719, 0.5, false, true},  {12, 1.8026, 0.5, false, true},    {13, 1.96278, 0.1792, true, true}};
    for (const auto& row : fixed) {
        const CriticalValues found = FixedCriticalValues(row.sensors, 0.5);
        const CriticalValues exact = ExactCriticalValues(row.sensors, monthlyDropsPerSet);
        EXPECT_THAT((std::array{found.F, found.CochranCritical}), ElementsAre(row.F, row.C)) << row.sensors;
        EXPECT_EQ(DiffersFromExact(found.F, exact.F), row.FDiffers) << row.sensors;
        EXPECT_EQ(DiffersFromExact(found.CochranCritical, exact.CochranCritical), row.CDiffers) << row.sensors;
    }
}

// ---- limits and decisions

struct Gains {
    double ratio = 1;
    double gain = 1;
};

/// Six sensors with an existing gain of 1, of which the third has these ratios and gains in its trials.
CalibrationRun RunWith(Procedure procedure, const std::vector<Gains>& trials, double existing = 1) {
    CalibrationRun run;
    run.CurrentProcedure = procedure;
    run.NumberSensors = 6;
    run.RelTrials = static_cast<int>(trials.size());
    for (auto& sensor : run.Sensor) {
        sensor.InitialGain = 1;
        for (auto& trial : sensor.RelTrial) trial.AdjFactor = trial.Gain = 1;
    }
    run.Sensor[2].InitialGain = existing;
    for (std::size_t t = 0; t < trials.size(); ++t) {
        run.Sensor[2].RelTrial[t].AdjFactor = trials[t].ratio;
        run.Sensor[2].RelTrial[t].Gain = trials[t].gain;
    }
    return run;
}

TEST(MonthlyCounts, ExactlyAtALimit) {
    const struct {
        std::vector<Gains> trials;
        double existing;
        std::array<int, 4> counts;  ///< tolerance, 2 %, difference, reset
    } rows[] = {
        {{{0.997, 1}}, 1, {0, 0, 0, 0}},
        {{{1.003, 1}}, 1, {0, 0, 0, 0}},
        {{{0.99699, 1}}, 1, {1, 0, 0, 0}},
        {{{1.00301, 1}}, 1, {1, 0, 0, 0}},
        {{{1, 1.02}}, 1.017, {0, 0, 0, 0}},
        {{{1, 0.98}}, 0.983, {0, 0, 0, 0}},
        {{{1, 1.02001}}, 1.017, {0, 1, 0, 1}},
        {{{1, 1.001}, {1, 1.004}}, 1, {0, 0, 1, 0}},
        {{{1, 1.004}, {1, 1.001}}, 1, {0, 0, 1, 0}},
        {{{1, 1.001}, {1, 1.00399}}, 1, {0, 0, 0, 0}},
        {{{1, 1.002}, {1, 1.0041}}, 1, {0, 0, 0, 1}},
        {{{0, 0}}, 1, {1, 1, 0, 1}},
    };
    for (const auto& row : rows) {
        const CalibrationRun run = RunWith(Procedure::MonthlyRelative, row.trials, row.existing);
        const MonthlyCounts counts = CountMonthlySensors(run, run.RelTrials);
        EXPECT_EQ((std::array{counts.OutOfTolerance, counts.OutOf2Percent, counts.TrialDifferenceFailures,
                              counts.SensorsToReset}),
                  row.counts)
            << row.trials.back().ratio << ' ' << row.trials.back().gain;
        EXPECT_EQ(counts.sensors[2].isToBeReset, row.counts[3] == 1);
        EXPECT_EQ(counts.sensors[1].meanGain, 1);
    }
}

TEST(MonthlyDecision, FollowsTheTables) {
    const Gains middle{1, 1}, near{1, 1.0029}, far{1, 1.003};
    constexpr int asks = 252;
    const auto monthly = Procedure::MonthlyRelative, replacement = Procedure::SensorReplacement;
    const struct {
        Procedure procedure;
        std::vector<Gains> trials;
        std::optional<std::size_t> replaced;
        int step;  ///< 0: it stays
    } rows[] = {
        {monthly, {}, {}, 61},
        {monthly, {middle}, {}, 69},
        {monthly, {{1.0031, 1.0031}}, {}, 61},
        {monthly, {{1, 1.03}}, {}, 61},
        {monthly, {middle, near}, {}, 63},
        {monthly, {middle, far}, {}, asks},
        {replacement, {}, 2, 0},
        {replacement, {middle}, 2, 71},
        {replacement, {middle, near}, 2, 73},
        {replacement, {middle, far}, 2, 71},
        {replacement, {middle, far}, 1, 73},
        {replacement, {middle, near}, {}, 71},
        // Standard deviations of 0.0029 and of exactly 0.003.
        {replacement, {{1, 1.0029}, middle, {1, 0.9971}}, 2, 73},
        {replacement, {{1, 1.003}, middle, {1, 0.997}}, 2, 71},
        {replacement, {{1, 1.1}, middle, {1, 0.9}, middle}, 2, 73},
        {replacement, {middle, middle, middle, middle}, {}, 73},
    };
    for (const auto& row : rows) {
        const MonthlyDecision decision = RelativeCalibrationStatus(RunWith(row.procedure, row.trials), row.replaced);
        EXPECT_EQ(decision.step.value_or(decision.asksForTwoNewTrials ? asks : 0), row.step) << &row - rows;
    }
}

// ---- bad input

SampleDocument SampleOf(std::size_t sensors, std::size_t drops) {
    SampleDocument file;
    file.gains.assign(sensors, 1);
    file.readings.assign(sensors, std::vector<double>(drops, 500.3));
    return file;
}

MonthlyReading ReadInto(CalibrationRun& run, const SampleDocument& file) {
    PDDXFile document;
    file.Fill(document);
    return ReadMonthlyTrial(document, run, "Monthly.F25");
}

TEST(ReadMonthlyTrial, WrongFilesLeaveTheRunReadyForAnother) {
    SampleDocument none = SampleOf(7, 35), many = SampleOf(7, 35), empty = SampleOf(7, 0);
    none.sensors = "0";
    many.sensors = "13";
    const struct {
        const char* what;
        SampleDocument file;
        int trialsBefore;
        MonthlyProblem problem;
    } rows[] = {{"no sensors", none, 0, MonthlyProblem::NoSensors},
                {"too many", many, 0, MonthlyProblem::TooManySensors},
                {"a drop too few", SampleOf(7, 34), 0, MonthlyProblem::WrongDropCount},
                {"a drop too many", SampleOf(7, 36), 0, MonthlyProblem::WrongDropCount},
                {"no drops", empty, 0, MonthlyProblem::WrongDropCount},
                {"other sensors than before", SampleOf(8, 40), 1, MonthlyProblem::OtherSensorCount},
                {"all trials done", SampleOf(7, 35), 4, MonthlyProblem::NoRoom}};
    for (const auto& row : rows) {
        CalibrationRun run;
        run.RelTrials = row.trialsBefore;
        const MonthlyReading reading = ReadInto(run, row.file);
        EXPECT_EQ(reading.problem, row.problem) << row.what;
        EXPECT_FALSE(run.RelTrialInHand) << row.what;
        if (row.problem == MonthlyProblem::WrongDropCount) {
            EXPECT_EQ(run.NumberDropsPerLoadLevel, reading.dropsInFile) << "message 251 shows it";
        }
        const auto next = row.trialsBefore < 4 ? MonthlyProblem::None : MonthlyProblem::NoRoom;
        EXPECT_EQ(ReadInto(run, SampleOf(7, 35)).problem, next) << row.what;
    }
}

TEST(ReadMonthlyTrial, TakesWhatTheFileTells) {
    CalibrationRun run;
    SampleDocument file = SampleOf(7, 35);
    file.gains[3] = 1.012;
    file.firstDrop = "x, 500.1,, 1E300, 499 . 5";
    const MonthlyReading reading = ReadInto(run, file);
    EXPECT_THAT(run.RelTrialInHand->unreadable,
                ElementsAre("Drop 1, load: \"x\"", "Drop 1, sensor 2: \"\"", "Drop 1, sensor 3: \"1E300\"",
                            "Drop 1, sensor 4: \"499 . 5\"", "Drop 1, sensor 5: \"\"", "Drop 1, sensor 6: \"\"",
                            "Drop 1, sensor 7: \"\""));
    EXPECT_THAT((std::array{run.Sensor[0].RelTrial[0].DropData[0], run.Sensor[1].RelTrial[0].DropData[0],
                            run.Sensor[6].RelTrial[0].DropData[34], run.Sensor[3].InitialGain}),
                ElementsAre(500.1, 0, 500.3, 1.012));
    EXPECT_EQ(reading.loads.size(), 35U);
    EXPECT_EQ(reading.loads[34], 87);
    EXPECT_EQ(reading.endDate, "09-Mar-2012");
    EXPECT_EQ(run.DeviceSerialNumber, "8002-123");
    EXPECT_EQ(run.RelTrialInHand->rawFileName, "Monthly.F25");
    file.gains[3] = 1.013;
    EXPECT_THAT(ReadInto(run, file).otherGains, ElementsAre("sensor 4: gain 1.013 in place of 1.012"));
    EXPECT_EQ(run.Sensor[3].InitialGain, 1.012);
}

TEST(ReadMonthlyTrial, AFileOfAnotherFWDDiffersFromTheRun) {
    for (const Procedure procedure : {Procedure::MonthlyRelative, Procedure::SensorReplacement}) {
        CalibrationRun run;
        run.CurrentProcedure = procedure;
        run.LoadCellSerialNumber = "of an annual run";
        ReadInto(run, SampleOf(7, 35));
        run.Sensor[1].SerialNumber = "X";
        PDDXFile document;
        SampleOf(8, 40).Fill(document);
        EXPECT_THAT(DifferencesFromRun(document, run),
                    ElementsAre("sensor 2: S-2 in place of X", "8 sensors in place of 7"));
    }
}

TEST(AnalyseMonthlyTrial, SaysNothingWhereNothingCanBeSaid) {
    CalibrationRun run;
    SampleDocument file = SampleOf(7, 35);
    file.deflectionUnits = "mils";
    file.readings.assign(7, std::vector<double>(35, 19.81));
    ReadInto(run, file);
    const MonthlyAnalysis equal = AnalyseMonthlyTrial(run, 1, 0, FailOnWarning);
    EXPECT_FALSE(equal.table.rows[latin_square::sensor].F);
    EXPECT_FALSE(equal.SetIsSignificant || equal.PositionIsSignificant || equal.SensorIsSignificant);
    EXPECT_FALSE(equal.cochran.C);
    EXPECT_FALSE(equal.CochranExceeded);
    EXPECT_EQ(equal.table.standardError, 0);
    EXPECT_EQ(run.Sensor[6].RelTrial[0].AdjFactor, 1);
    EXPECT_THAT(DoubtsAboutMonthlyTrial(run), IsEmpty());

    file.readings[2].assign(35, 0);
    file.gains[4] = 0;
    run = {};
    ReadInto(run, file);
    const MonthlyAnalysis dead = AnalyseMonthlyTrial(run, 1, 0, FailOnWarning);
    EXPECT_EQ(run.Sensor[2].RelTrial[0].AdjFactor, 0);
    EXPECT_EQ(run.Sensor[2].RelTrial[0].Gain, 0);
    EXPECT_FALSE(dead.cochran.C);
    run.RelTrials = 1;
    ReadInto(run, file);
    AnalyseMonthlyTrial(run, 2, 0, FailOnWarning);
    EXPECT_THAT(DoubtsAboutMonthlyTrial(run),
                ElementsAre("There is no deflection of sensor 3: its relative gain is 0.",
                            "There is no existing gain of sensor 5: its relative gain is 0.",
                            "The readings are those of trial 1, to the last digit."));
}

}  // namespace
}  // namespace bellmark
