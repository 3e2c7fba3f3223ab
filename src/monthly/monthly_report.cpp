#include "monthly/monthly_report.h"

#include <algorithm>

#include "monthly/monthly_trial.h"
#include "monthly/rotation.h"
#include "platform/column_text.h"
#include "platform/format.h"
#include "platform/numbers.h"
#include "platform/text.h"
#include "run/paths.h"

namespace bellmark {

namespace {

constexpr const char* gainPicture = "0.000";
constexpr const char* ratioPicture = "0.0000";
constexpr const char* serialPicture = "@@@@@@@@";
constexpr const char* squaresPicture = "0.00E+00";

Path PathBeside(const Path& dataFile, DateTime today, const std::string& extension) {
    const std::string name = PathText(dataFile.stem()) + '_' + Format(today, "dd-mmm-yyyy") + '.' + extension;
    return dataFile.parent_path() / PathFromText(FileNameOf(name));
}

const char* Prefix(Procedure procedure) {
    return procedure == Procedure::SensorReplacement ? "S" : "M";
}

const char* Flag(bool isOut) {
    return isOut ? "YES" : " NO";
}

/// The text at the right end of a place.
std::string AtRight(const std::string& text, std::size_t width) {
    return FormatText(text, std::string(width, '@'));
}

/// Writes one report.
class Report {
  public:
    Report(const MonthlyFacts& facts, const MonthlyReading& reading, const Path& dataFile)
        : facts_(facts),
          run_(facts.run),
          reading_(reading),
          dataFileName_(PathText(dataFile.filename())),
          sensors_(facts.counts.sensors.size()) {}

    std::string OfTrial() {
        WriteGains();
        BeginPage();
        WriteVariance();
        BeginPage();
        WriteDrops();
        BeginPage();
        WriteStatistics();
        return text_.Text();
    }

    std::string Final() {
        WriteHead("Final Gain Factors");
        Line("                         Means and Gains Table");
        Line("                Existing     Trial 1         Trial 2     Calculated");
        Line("Sensor  Serial    Gain    Means Relative  Means Relative  Relative  Out of Limit");
        Line("   #    Number   Factor   Ratio   Gain    Ratio   Gain      Gain      Tol.  \u00B12%");
        Line("------ -------- --------  --------------  --------------  --------   ----- -----");
        for (std::size_t s = 0; s < sensors_; ++s) WriteFinalSensor(s);
        return text_.Text();
    }

    std::string FinalOfReplacement() {
        WriteHead("Final Gain Factors");
        Line("                         Trial Information Table");
        Line("                      Existing                  Out of");
        Line("Trial Sensor  Serial    Gain    Means Relative   Limit");
        Line("  #      #    Number   Factor   Ratio   Gain      \u00B12% ");
        Line("----- ------ -------- --------  --------------  ------");
        WriteReplacedTrials(facts_.replacedSensor.value());
        return text_.Text();
    }

  private:
    void Line(std::string_view text = {}) { text_.Then(text).EndLine(); }
    void Lines(const std::vector<std::string>& lines) {
        for (const std::string& line : lines) Line(line);
    }
    /// Printers begin a new page at a form feed. It takes no column.
    void BeginPage() { pageBreak_ = "\f"; }

    std::string Number(std::size_t sensor) const {
        return NumberText(ShownSensorNumber(run_, static_cast<int>(sensor)));
    }
    const RelativeTrialRecord& TrialOfSensor(std::size_t sensor, int trial) const {
        return run_.Sensor.at(sensor).RelTrial.at(static_cast<std::size_t>(trial - 1));
    }

    /// behind: the title's end.
    void WriteHead(const std::string& behind) {
        const bool isReplacement = run_.CurrentProcedure == Procedure::SensorReplacement;
        Line(pageBreak_ +
             (isReplacement ? "     AASHTO R32 FWD Geophone Replacement - "
                            : "     AASHTO R32 FWD Monthly Relative Calibration - ") +
             behind);
        text_.Then("FWD SN: ").Then(reading_.deviceSerialNumber);
        text_.At(34, "Calibration Date: ").Then(reading_.endDate).EndLine();
        Line("Data File Name: " + dataFileName_);
        Line("Operator: " + reading_.operatorName);
        Line();
    }
    void WriteTrialHead() { WriteHead("Trial " + NumberText(facts_.trials)); }

    // ---- page 1

    void WriteGains() {
        WriteTrialHead();
        Line("                         Means and Gains Table");
        Line();
        Line("   Sensor    Sensor    Existing     Means         New            Out of Limit");
        Line("     #        S/N     Gain Factor   Ratio    Relative Gain   Tolerance   2% Range");
        Line("  --------  --------  -----------   ------   -------------   ---------   --------");
        for (std::size_t s = 0; s < sensors_; ++s) WriteGain(s);
        Lines(ReportWarnings(facts_));
        if (const auto note = NoteOnReplacement()) Line(*note);
        Line();
        Line();
        Lines(AdjustmentText(facts_));
    }

    std::optional<std::string> NoteOnReplacement() const {
        if (run_.CurrentProcedure != Procedure::SensorReplacement) return {};
        return ReplaceSensorCheck(run_, facts_.trials, facts_.replacedSensor);
    }

    void WriteGain(std::size_t s) {
        const RelativeTrialRecord& trial = TrialOfSensor(s, facts_.trials);
        const MonthlySensor& found = facts_.counts.sensors[s];
        // A place of five for each flag.
        const auto flag = [](bool isOut) { return std::string(Flag(isOut)) + "  "; };
        text_.At(5, AtRight(Number(s), 2));
        text_.At(12, FormatText(run_.Sensor.at(s).SerialNumber, serialPicture));
        text_.At(26, Format(run_.Sensor.at(s).InitialGain, gainPicture));
        text_.At(37, Format(trial.AdjFactor, ratioPicture)).At(50, Format(trial.Gain, gainPicture));
        text_.At(65, flag(found.isOutOfTolerance)).At(76, flag(found.isOutOf2Percent)).EndLine();
    }

    // ---- page 2

    void WriteVariance() {
        WriteTrialHead();
        Line("                       Latin Square ANOVA Table");
        Line();
        Line("     Variation      Sum of      Degrees of   Mean        Computed   Critical");
        Line("     Source         Squares      Freedom     Square          F          F");
        Line("     -----------    ---------   ----------   ---------   --------   --------");
        const auto& rows = facts_.analysis.table.rows;
        for (const std::size_t source : {latin_square::position, latin_square::set, latin_square::sensor})
            WriteSource(rows.at(source));
        WriteVariation(rows.at(latin_square::error));
        WriteMeanSquare(rows.at(latin_square::error));
        Line();
        WriteVariation(rows.at(latin_square::total));
        Line();
        Line();
        WriteStandardError();
        Lines(AnovaText(facts_));
    }

    void WriteSource(const VarianceRow& row) {
        WriteVariation(row);
        WriteMeanSquare(row);
        if (row.F) text_.At(58, Format(*row.F, "0.00"));
        text_.At(70, Format(facts_.analysis.critical.F, "0.00")).EndLine();
    }
    void WriteVariation(const VarianceRow& row) {
        text_.At(5, row.source).At(20, Format(row.sumOfSquares, squaresPicture));
        if (row.degreesOfFreedom) text_.At(35, AtRight(NumberText(*row.degreesOfFreedom), 3));
    }
    void WriteMeanSquare(const VarianceRow& row) {
        if (row.meanSquare) text_.At(45, Format(*row.meanSquare, squaresPicture));
    }

    void WriteStandardError() {
        const StandardErrorInUnits& error = facts_.analysis.standardError;
        const std::string mils = Format(error.mils, "#0.000") + " mils";
        const std::string microns = Format(error.microns, "#,##0.0") + " microns";
        Line("Standard Error = " + (run_.EnglishUnits ? mils + "   " + microns : microns + "   " + mils));
    }

    // ---- pages 3 and 4: a place of six for the load, one of seven for each deflection with a blank in front

    static constexpr std::size_t loadWidth = 6;
    static constexpr std::size_t deflectionWidth = 7;
    static constexpr int loadColumn = 10;

    /// The last column of page 4 is that of all sensors; its name may need more room.
    std::size_t WidthOfAll() const { return std::max(deflectionWidth, NameOfAll().size() + 1); }
    std::string NameOfAll() const { return "Df" + Number(0) + '-' + Number(sensors_ - 1) + '#'; }

    std::string Deflection(double value, std::size_t width = deflectionWidth) const {
        return AtRight(Format(value, run_.EnglishUnits ? "  #0.00" : " 0000.0"), width);
    }
    void WriteSensorNames() {
        for (std::size_t s = 0; s < sensors_; ++s) text_.Then(AtRight("Df" + Number(s) + '#', deflectionWidth));
    }
    void WriteRules() {
        for (std::size_t s = 0; s < sensors_; ++s) text_.Then(" ------");
    }

    void WriteDrops() {
        WriteTrialHead();
        text_.At(23, "Relative Calibration - Input Data").EndLine();
        Line("Set Drop  Load                 Deflections");
        text_.Then(run_.EnglishUnits ? " #    #    lbf  " : " #    #    kN   ");
        WriteSensorNames();
        Line();
        text_.Then("--- ---- ------ ");
        WriteRules();
        Line();
        for (std::size_t set = 0; set < sensors_; ++set) {
            for (std::size_t drop = 0; drop < dropsPerSet; ++drop) WriteDrop(set, drop);
            Line();
        }
    }

    void WriteDrop(std::size_t set, std::size_t drop) {
        const std::size_t at = set * dropsPerSet + drop;
        text_.Then(AtRight(NumberText(set + 1), 2)).At(7, NumberText(drop + 1));
        text_.At(loadColumn, AtRight(Format(reading_.loads.at(at), "##,###"), loadWidth)).Then(" ");
        for (std::size_t s = 0; s < sensors_; ++s)
            text_.Then(Deflection(TrialOfSensor(s, facts_.trials).DropData.at(at)));
        Line();
    }

    void WriteStatistics() {
        WriteTrialHead();
        text_.At(24, "Relative Calibration - Summary Statistics").EndLine();
        WriteSets();
        Line();
        WriteOverall();
        Line();
        WritePositions();
        Line();
    }

    /// names: of the deflections' columns.
    void WriteStatisticsHeading(bool withSensors) {
        text_.Then("          Load  ");
        if (withSensors) WriteSensorNames();
        text_.Then(AtRight(NameOfAll(), WidthOfAll())).EndLine();
        text_.Then("         ------ ");
        if (withSensors) WriteRules();
        text_.Then(AtRight("------", WidthOfAll())).EndLine();
    }

    /// The begin of a row: its name, and the load in a picture.
    void BeginRow(const std::string& name, double load, const char* picture) {
        text_.Then(name).At(loadColumn, AtRight(Format(load, picture), loadWidth)).Then(" ");
    }

    void WriteSets() {
        WriteStatisticsHeading(true);
        for (std::size_t set = 0; set < sensors_; ++set) {
            const auto loads = std::span(reading_.loads).subspan(set * dropsPerSet, dropsPerSet);
            BeginRow("Set" + NumberText(set + 1) + " Av", GroupOf(loads).average, "##,000");
            for (std::size_t s = 0; s < sensors_; ++s) {
                const auto drops = std::span(TrialOfSensor(s, facts_.trials).DropData);
                text_.Then(Deflection(GroupOf(drops.subspan(set * dropsPerSet, dropsPerSet)).average));
            }
            text_.Then(Deflection(facts_.analysis.square.sets.at(set).average, WidthOfAll())).EndLine();
        }
        WriteSummaries(facts_.analysis.square.sensors);
    }

    void WriteOverall() {
        Line("                                Overall Statistics");
        WriteStatisticsHeading(false);
        WriteSummaries({});
    }

    /// Average, standard deviation and coefficient of variation of the load, of each group and of everything.
    void WriteSummaries(const std::vector<ReadingGroup>& groups) {
        const ReadingGroup load = GroupOf(reading_.loads);
        for (const auto& [name, value] : summaries) {
            BeginRow(name, value(load), "##,##0");
            for (const ReadingGroup& group : groups) text_.Then(Deflection(value(group)));
            text_.Then(Deflection(value(facts_.analysis.square.all), WidthOfAll())).EndLine();
        }
    }

    void WritePositions() {
        Line("                         Position in Stand");
        Line("    #   Average  Std Dev   COV, %");
        const auto& positions = facts_.analysis.square.positions;
        for (std::size_t position = 0; position < positions.size(); ++position) {
            text_.Then(AtRight(NumberText(position + 1), 5)).Then(" ");
            for (const auto& [name, value] : summaries) text_.Then(Deflection(value(positions[position]), 9));
            Line();
        }
    }

    struct Summary {
        const char* name;
        double (*value)(const ReadingGroup&);
    };
    static constexpr std::array summaries{Summary{"Average", [](const ReadingGroup& group) { return group.average; }},
                                          Summary{"Std Dev", [](const ReadingGroup& group) { return group.stdDev; }},
                                          Summary{"COV, %", CoefficientOfVariation}};

    // ---- final reports

    void WriteFinalSensor(std::size_t s) {
        const MonthlySensor& found = facts_.counts.sensors[s];
        text_.At(3, AtRight(Number(s), 2)).At(8, FormatText(run_.Sensor.at(s).SerialNumber, serialPicture));
        text_.At(19, Format(run_.Sensor.at(s).InitialGain, gainPicture));
        for (int trial = 1; trial <= std::min(facts_.trials, 2); ++trial) {
            text_.At(16 * trial + 11, Format(TrialOfSensor(s, trial).AdjFactor, ratioPicture));
            text_.At(16 * trial + 19, Format(TrialOfSensor(s, trial).Gain, gainPicture));
        }
        text_.At(61, Format(found.meanGain, gainPicture)).At(71, Flag(found.isOutOfTolerance));
        text_.At(77, Flag(found.isOutOf2Percent)).EndLine();
    }

    void WriteReplacedTrials(std::size_t s) {
        double ratios = 0;
        for (int trial = 1; trial <= facts_.trials; ++trial) {
            const RelativeTrialRecord& record = TrialOfSensor(s, trial);
            ratios += record.AdjFactor;
            text_.At(3, AtRight(NumberText(trial), 2)).At(9, Number(s)).At(14, run_.Sensor.at(s).SerialNumber);
            text_.At(25, Format(run_.Sensor.at(s).InitialGain, gainPicture));
            WriteRatioAndGain(record.AdjFactor, record.Gain);
        }
        text_.At(20, "Average");
        WriteRatioAndGain(ratios / facts_.trials, facts_.counts.sensors.at(s).meanGain);
        text_.At(20, "Standard Deviation");
        text_.At(41, Format(ReplacedGainStdDev(run_, facts_.trials, s), "0.0000")).EndLine();
        Line(FinalReplacementText(run_, s));
    }

    void WriteRatioAndGain(double ratio, double gain) {
        text_.At(33, Format(ratio, ratioPicture)).At(41, Format(gain, gainPicture));
        text_.At(51, Flag(IsOutOf2Percent(gain))).EndLine();
    }

    static constexpr std::size_t dropsPerSet = monthlyDropsPerSet;

    ColumnText text_;
    std::string pageBreak_;
    const MonthlyFacts& facts_;
    const CalibrationRun& run_;
    const MonthlyReading& reading_;
    std::string dataFileName_;
    std::size_t sensors_;
};

}  // namespace

Path MonthlyReportPath(const Path& dataFile, Procedure procedure, int trial, DateTime today) {
    return PathBeside(dataFile, today, std::string(Prefix(procedure)) + 'C' + NumberText(trial));
}

Path MonthlyFinalPath(const Path& dataFile, Procedure procedure, DateTime today) {
    return PathBeside(dataFile, today, std::string(Prefix(procedure)) + "FG");
}

std::string OutputToFile(const MonthlyFacts& facts, const MonthlyReading& reading, const Path& dataFile) {
    return Report(facts, reading, dataFile).OfTrial();
}

std::string OutputFinalField(const MonthlyFacts& facts, const MonthlyReading& reading, const Path& dataFile) {
    return Report(facts, reading, dataFile).Final();
}

std::string OutputFinalReplace(const MonthlyFacts& facts, const MonthlyReading& reading, const Path& dataFile) {
    return Report(facts, reading, dataFile).FinalOfReplacement();
}

}  // namespace bellmark
