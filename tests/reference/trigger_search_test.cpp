#include "reference/trigger_search.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "reference/accel_analysis.h"
#include "tests/reference/made_accel_block.h"

namespace bellmark {
namespace {

TEST(TriggerSearch, AgreesWithAnAnalysisOfEachLevel) {
    const struct {
        const char* name;
        MadeAccelBlock block;
        struct {
            double lower, upper, proposed;
        } band;
        std::string goodLevels;  ///< '1' a good level, '0' a bad one, up to the end of the search
    } cases[] = {
#include "tests/reference/trigger_search_expected.inc"
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.name);
        DropRecord drop = DropOf(VoltsOf(test.block));
        AnalyzeAccelSamples(drop, MadeCenter(test.block.level));
        const TriggerBand band = DetermineTrigger(drop);
        EXPECT_EQ(band.lowerBound, test.band.lower);
        EXPECT_EQ(band.upperBound, test.band.upper);
        EXPECT_EQ(band.newTrigger, test.band.proposed);
        ASSERT_EQ(band.levels.size(), 100U);
        std::string goodLevels;
        for (std::size_t i = 0; i < test.goodLevels.size(); ++i) goodLevels += band.levels[i].good ? '1' : '0';
        EXPECT_EQ(goodLevels, test.goodLevels);
    }
}

// The reference drop differs from the results of the levels by these amounts.
TEST(TriggerSearch, ALevelIsGoodWithinFifteenSamplesATenthOfAMillisecondAndAMicron) {
    const struct {
        int samples;
        double milliseconds, microns;
        bool good;
    } cases[] = {{14, 0, 0, true},   {-14, 0, 0, true},   {15, 0, 0, false}, {-15, 0, 0, false}, {0, 0.1, 0, true},
                 {0, -0.1, 0, true}, {0, 0.11, 0, false}, {0, 0, 1, true},   {0, 0, -1, true},   {0, 0, 1.1, false}};
    DropRecord drop = DropOf(VoltsOf({6000, 7, 0.004, 0, {{3000, 400, 1500}}, {}, {}, 0.3}));
    AnalyzeAccelSamples(drop, MadeCenter(0.3));
    for (const auto& test : cases) {
        DropRecord other = drop;
        other.PeakIndex += test.samples;
        other.RiseTime += test.milliseconds;
        other.PeakMetric += test.microns;
        EXPECT_EQ(DetermineTrigger(other).levels[14].good, test.good) << test.samples << ' ' << test.milliseconds;
    }
}

/// A pulse, preceded by a motion that fires the trigger at low levels.
MadeAccelBlock PulseBehindPlateau(double plateau) {
    return {6000, 7, 0.004, 0, {{3000, 400, 1500}}, {}, {1000, plateau != 0 ? 400 : 0, plateau}, 0.3};
}

TEST(TriggerSearch, LevelsAreThoseOfTheAnalysisAndTheRecordStays) {
    // At low levels the second block's pulse follows a false trigger, at others it comes first: the same place,
    // measured with another drift.
    const MadeAccelBlock falseTrigger{6000, 82840, 0.0024, 0, {{561, 60, 32}, {2338, 515, 351.5}}, {}, {}, 0.3};
    for (const MadeAccelBlock& block : {PulseBehindPlateau(-0.15), falseTrigger}) {
        SCOPED_TRACE(block.seed);
        DropRecord drop = DropOf(VoltsOf(block));
        AnalyzeAccelSamples(drop, MadeCenter(0.3));
        const DropRecord before = drop;
        const TriggerBand band = DetermineTrigger(drop);
        EXPECT_EQ(drop.TriggerLevel, before.TriggerLevel);
        EXPECT_EQ(drop.FulcrumIndex, before.FulcrumIndex);
        EXPECT_EQ(drop.PeakMetric, before.PeakMetric);
        EXPECT_EQ(drop.Velocity, before.Velocity);
        EXPECT_EQ(drop.Displacement, before.Displacement);
        int good = 0;
        for (const TriggerLevelResult& level : band.levels) {
            drop.TriggerLevel = level.level;
            const PulseScan scan(drop);
            RegressionIntegration(drop, scan);
            EXPECT_EQ(drop.PeakMetric, level.peakMicrons) << level.level;
            EXPECT_EQ(drop.PeakIndex, level.peakIndex) << level.level;
            EXPECT_EQ(drop.StartPulseIndex, level.startPulseIndex) << level.level;
            EXPECT_EQ(drop.RiseTime, level.riseTime) << level.level;
            good += level.good ? 1 : 0;
        }
        EXPECT_GT(good, 10);
        EXPECT_LT(good, 100);
    }
}

TEST(TriggerSearch, TheSameAtAllLevelsGivesTheMiddle) {
    DropRecord drop = DropOf(VoltsOf(PulseBehindPlateau(0)));
    AnalyzeAccelSamples(drop, MadeCenter(0.3));
    const TriggerBand band = DetermineTrigger(drop);
    EXPECT_EQ(band.lowerBound, 0.02);
    EXPECT_NEAR(band.upperBound, 2.0, 1e-12);
    EXPECT_EQ(band.newTrigger, 1.01);
}

TEST(TriggerSearch, NoLevelIsGoodWhereTheBlockCannotBeIntegrated) {
    for (const int samples : {0, 1, 150}) {
        DropRecord drop = DropOf(std::vector<float>(static_cast<std::size_t>(samples), 3.0F));
        AnalyzeAccelSamples(drop, MadeCenter(0.06));
        const TriggerBand band = DetermineTrigger(drop);
        EXPECT_EQ(band.lowerBound, 0.05);
        EXPECT_NEAR(band.upperBound, 0.06, 1e-12) << "closed above the level in force";
        for (const auto& level : band.levels) EXPECT_FALSE(level.good);
    }
}

// By hand, as 4 / sqrt(n S) with S the sum of the squared peaks.
TEST(NumberOfDrops, KeepsTheErrorBelowTheLimit) {
    const struct {
        double high, low;
        int heights;
        std::optional<int> drops;
    } cases[] = {
        {100, 100, 4, {}},                     // S = 40000: 0.0063 with ten drops
        {1000, 1000, 4, 5},                    // four are enough, five the least
        {1000, 1000, 3, 6}, {500, 200, 4, 5},  // S = 540000: 0.00272 with four
        {400, 400, 2, 6},                      // S = 320000: 0.00298 with six, 0.00316 with five
        {400, 400, 3, 6},                      // S = 480000: four
        {300, 300, 3, 7},                      // S = 270000: 0.00291 with seven, 0.00314 with six
        {211, 211, 4, 10},                     // S = 178084: 0.002997 with ten
        {210, 210, 4, {}},                     // S = 176400: 0.0030117 with ten
        {0, 0, 4, {}},      {600, 600, 1, 5}, {std::nan(""), 100, 4, {}},
    };
    for (const auto& test : cases)
        EXPECT_EQ(MinimumNumberOfDrops(test.high, test.low, test.heights), test.drops)
            << test.high << ' ' << test.heights;
}

}  // namespace
}  // namespace bellmark
