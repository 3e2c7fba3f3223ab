// What is told of monthly trials, and their reports byte for byte against files that were checked by hand.
#include "monthly/monthly_report.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "monthly/monthly_trial.h"
#include "platform/text.h"
#include "relative/relative_trial.h"
#include "tests/monthly/monthly_samples.h"

namespace bellmark {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

void FailOnWarning(const char* text) {
    ADD_FAILURE() << text;
}

/// Trials of which all but the last are accepted. Sensor 3 reads more with each trial; the sensors and the loads differ
/// a little, and one sensor scatters.
class MonthlyReports : public testing::Test {
  protected:
    void MakeTrials(Procedure procedure, std::size_t sensors, int trials) {
        run_.CurrentProcedure = procedure;
        for (int trial = 1; trial <= trials; ++trial) {
            if (trial > 1) CountRelativeTrial(run_);
            PDDXFile document;
            Sample(sensors, trial).Fill(document);
            reading_ = ReadMonthlyTrial(document, run_, "");
            analysis_ = AnalyseMonthlyTrial(run_, trial, 0, FailOnWarning);
            counts_ = CountMonthlySensors(run_, trial);
        }
        trials_ = trials;
    }

    SampleDocument Sample(std::size_t sensors, int trial) const {
        SampleDocument file;
        file.deflectionUnits = run_.EnglishUnits ? "mils" : "microns";
        const double base = run_.EnglishUnits ? 19.8 : 502.9;
        for (std::size_t s = 0; s < sensors; ++s) {
            file.gains.push_back(1 + 0.002 * static_cast<double>(s % 5));
            file.readings.emplace_back();
            for (std::size_t drop = 0; drop < 5 * sensors; ++drop) {
                const double scatter = 0.0004 * static_cast<double>((s * 31 + drop * 17) % (s == 4 ? 13 : 7));
                const double wrong = s == 2 ? 0.005 * trial : 0;
                file.readings.back().push_back(Round(base * (1 + scatter + wrong), run_.EnglishUnits ? 2 : 1));
            }
        }
        return file;
    }

    MonthlyFacts Facts() const { return {run_, analysis_, counts_, trials_, false, replaced_}; }

    static std::string Expected(const std::string& file) {
        return DiskFileSystem().ReadBytes(Path(BELLMARK_SOURCE_FOLDER) / "tests/monthly" / file);
    }

    CalibrationRun run_;
    MonthlyReading reading_;
    MonthlyAnalysis analysis_;
    MonthlyCounts counts_;
    int trials_ = 0;
    std::optional<std::size_t> replaced_;
    Path dataFile_ = "road/Monthly 1.F25";
};

TEST_F(MonthlyReports, OfATrialInMils) {
    MakeTrials(Procedure::MonthlyRelative, 7, 1);
    EXPECT_EQ(ToWindows1252(OutputToFile(Facts(), reading_, dataFile_)), Expected("trial_mils.txt"));
}

TEST_F(MonthlyReports, OfAReplacementInMicronsOfAKuab) {
    run_.EnglishUnits = false;
    run_.Manufacturer = Make::Kuab;
    replaced_ = 2;
    MakeTrials(Procedure::SensorReplacement, 12, 2);
    EXPECT_EQ(ToWindows1252(OutputToFile(Facts(), reading_, dataFile_)), Expected("trial_microns.txt"));
}

TEST_F(MonthlyReports, OfTheFinalGains) {
    MakeTrials(Procedure::MonthlyRelative, 7, 2);
    CountRelativeTrial(run_);
    std::string text = OutputFinalField(Facts(), reading_, dataFile_);
    run_ = {};
    MakeTrials(Procedure::SensorReplacement, 7, 3);
    CountRelativeTrial(run_);
    replaced_ = 2;
    text += OutputFinalReplace(Facts(), reading_, dataFile_);
    EXPECT_EQ(ToWindows1252(text), Expected("finals.txt"));
}

TEST(MonthlyReportNames, StandBesideTheFile) {
    const DateTime today = MakeDateTime(2012, 3, 9);
    const Path file = "road/Monthly 1.F25";
    EXPECT_EQ(MonthlyReportPath(file, Procedure::MonthlyRelative, 2, today), "road/Monthly 1_09-Mar-2012.MC2");
    EXPECT_EQ(MonthlyReportPath(file, Procedure::SensorReplacement, 4, today), "road/Monthly 1_09-Mar-2012.SC4");
    EXPECT_EQ(MonthlyFinalPath(file, Procedure::MonthlyRelative, today), "road/Monthly 1_09-Mar-2012.MFG");
    EXPECT_EQ(MonthlyFinalPath("a.b.ddx", Procedure::SensorReplacement, today), "a.b_09-Mar-2012.SFG");
}

// ---- what is told

/// What the conditions ask, all of it quiet: one trial of six sensors, with nothing to tell.
struct Told {
    CalibrationRun run;
    MonthlyAnalysis analysis;
    MonthlyCounts counts;
    int trials = 1;
    bool plotWasShown = false;
    std::optional<std::size_t> replacedSensor = 2;

    Told() {
        run.NumberSensors = 6;
        run.Sensor[2].SerialNumber = "S-3";
        for (auto& trial : run.Sensor[2].RelTrial) trial.Gain = 1;
    }
    MonthlyFacts Facts() const { return {run, analysis, counts, trials, plotWasShown, replacedSensor}; }
};

/// Each line is told by a part of it.
void ExpectLines(const std::vector<std::string>& lines, const std::vector<std::string>& parts) {
    EXPECT_EQ(lines.size(), parts.size()) << testing::PrintToString(lines);
    for (std::size_t i = 0; i < std::min(lines.size(), parts.size()); ++i) EXPECT_THAT(lines[i], HasSubstr(parts[i]));
}

TEST(MonthlyTexts, AreToldUnderTheirConditions) {
    const std::string fine = "appears to be acceptable. Review the calibration plot for outliers";
    const std::string trivial = "adjustments are trivial. ";
    const std::string input = "\u2022Input the new Relative Gain for Sensor S-3 in the FWD.";
    const std::string none = "No gain adjustments are indicated. ", review = "50+ dropsfrom height 3";
    const struct {
        std::vector<std::string> (*told)(const MonthlyFacts&);
        void (*change)(Told&);
        std::vector<std::string> lines;
    } rows[] = {
        {MonthlyAdvice, [](Told&) {}, {fine, trivial + "If there are no anomalies"}},
        {MonthlyAdvice,
         [](Told& t) { t.plotWasShown = true; },
         {"This trial appears to be acceptable.", trivial + "If there were no anomalies"}},
        {MonthlyAdvice,
         [](Told& t) { t.analysis.standardError.isTooLarge = true; },
         {"more than 3 microns. This trial should be rejected", trivial}},
        {MonthlyAdvice,
         [](Told& t) { t.counts.OutOf2Percent = 1; },
         {fine, trivial, "2% manufactuers recommended", "  Notify Supervising"}},
        {MonthlyAdvice,
         [](Told& t) { t.counts.OutOfTolerance = 1; },
         {fine, "the 0.3% tolerance limit", "  Verify these results with another"}},
        {MonthlyAdvice,
         [](Told& t) { t.counts.OutOfTolerance = 1, t.trials = 2; },
         {fine, "the 0.3% tolerance limit", "  Gain Factors for each sensor in both"}},
        {MonthlyAdvice,
         [](Told& t) {
             t.counts = {{}, 1, 1, 1, 1}, t.trials = 2;
         },
         {fine, "the 0.3% tolerance limit", "manufactuers", "  Notify Supervising", "Relative Trail Gains",
          "Reject this set of two trials", "ALL SENSOR GAINS SHOULD BE RESET", "\u2022Input ALL",
          "After adjusting the gain settings"}},
        {ReplaceAdvice, [](Told&) {}, {fine}},
        {ReplaceAdvice, [](Told& t) { t.trials = 2, t.replacedSensor = {}; }, {fine}},
        {ReplaceAdvice,
         [](Told& t) { t.trials = 2; },
         {fine, "Gain Factors for the replacement sensor agree within", input, "After inputting"}},
        {ReplaceAdvice,
         [](Told& t) { t.trials = 2, t.run.Sensor[2].RelTrial[1].Gain = 1.003; },
         {fine, "are NOT within 0.003", "perform additional trials", "If the standard deviation"}},
        {ReplaceAdvice,
         [](Told& t) { t.trials = 3; },
         {fine, "is less than 0.003.", input, "After adjusting the gain settings"}},
        {ReplaceAdvice,
         [](Told& t) { t.trials = 4, t.run.Sensor[2].RelTrial[3].Gain = 1.007; },
         {fine, "is MORE than 0.003.", "An Annual FWD Calibration shall"}},
        {AnovaText, [](Told&) {}, {none, review}},
        {AnovaText, [](Told& t) { t.counts.OutOfTolerance = 1; }, {"Gain adjustments are indicated. ", review}},
        {AnovaText, [](Told& t) { t.analysis.SetIsSignificant = true; }, {none, "'Set' significance", review}},
        {AnovaText,
         [](Told& t) { t.analysis.PositionIsSignificant = t.analysis.SensorIsSignificant = true; },
         {none, "'Sensor number' significance", "'Position' significance", review}},
        {AnovaText,
         [](Told& t) { t.analysis.CochranExceeded = true, t.analysis.cochran.sensor = 4; },
         {none, review, "Results of Cochran Test",
          "Sensor No. 5 is significantly larger than the other sensors. This could be a result of a sensor issue"}},
        {AnovaText,
         [](Told& t) { t.analysis.CochranExceeded = t.analysis.standardError.isTooLarge = true; },
         {none, review, "Results of Cochran Test",
          "larger than the other sensors. This could be a result of incorrect"}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        Told told;
        row.change(told);
        ExpectLines(row.told(told.Facts()), row.lines);
    }
}

TEST(MonthlyTexts, OfAReplacedSensorAndOfTheExactCriticalValues) {
    Told told;
    told.run.Sensor[2].RelTrial[1].Gain = 1.0201;
    told.run.Sensor[2].FinalGain = 1.0105;
    EXPECT_EQ(ReplaceSensorCheck(told.run, 1, 2),
              "* Trial Relative Gain for REPLACED Sensor No.3 is 1.000\r\n is within the \u00B12% tolerance range.");
    EXPECT_EQ(ReplaceSensorCheck(told.run, 2, 2),
              "* Trial Relative Gain for REPLACED Sensor No.3 is 1.020\r\n is outside the \u00B12% tolerance range.");
    EXPECT_FALSE(ReplaceSensorCheck(told.run, 2, 6));
    EXPECT_FALSE(ReplaceSensorCheck(told.run, 2, {}));
    EXPECT_EQ(FinalReplacementText(told.run, 2), "The Final Gain for the replacement sensor S-3 is 1.011");
    told.analysis.critical = FixedCriticalValues(6, 0);
    EXPECT_THAT(
        ExactCriticalText(told.run, told.analysis),
        ElementsAre("Exact critical values at the 5% level for 6 sensors:", "F 2.2693, in the table 2.5000 *",
                    "Cochran's C 0.2729, in the table 0.0000 *", "* The table has another value. The table decides."));
}

}  // namespace
}  // namespace bellmark
