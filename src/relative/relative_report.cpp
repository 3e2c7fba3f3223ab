#include "relative/relative_report.h"

#include <algorithm>

#include "platform/column_text.h"
#include "platform/format.h"
#include "platform/numbers.h"
#include "platform/text.h"
#include "relative/relative_analysis.h"
#include "run/calibration_run.h"
#include "run/center_config.h"
#include "run/field_format.h"
#include "run/paths.h"
#include "run/version.h"

namespace bellmark {

namespace {

class Report {
  public:
    Report(const CalibrationRun& run, const CenterConfig& center, std::size_t trial, const RelativeReportFacts& facts,
           const AnalysisWarning& warn)
        : run_(run),
          center_(center),
          trial_(trial),
          facts_(facts),
          table_(RelativeTrialTable(run.RelTrial.at(trial), run.NumberSensors, warn)),
          deflection_(FieldFormat(Field::Deflection, run.EnglishUnits)) {}

    std::string Text() {
        WriteHeading();
        WriteParties();
        WriteSensors();
        WriteVariance();
        return text_.Text();
    }

  private:
    void Blank() { text_.EndLine(); }
    void Line(int column, std::string_view label, std::string_view value = {}) {
        text_.At(column, label).Then(value).EndLine();
    }
    /// Writes a number at its column, with a blank before it. If the column is already taken, the number starts a new
    /// line: the digits of two numbers must never touch.
    void Number(int column, std::string_view value) { text_.At(column - 1, ' ' + std::string(value)); }

    void WriteHeading() {
        Line(32, "FWD Calibration");
        Line(12, "Relative Deflection Sensor Calibration - Trial ", NumberText(trial_ + 1));
        Blank();
        Line(29, "Filename: ", facts_.fileName);
        Line(25, "Raw FWD File: ", facts_.rawFileName);
        Line(33, "Date: ", Format(facts_.now, "dd-mm-yyyy") + "     Time: " + Format(facts_.now, "hh:nn"));
        Blank();
    }

    void WriteParties() {
        Line(20, "System Under Test: ", run_.DeviceName);
        Line(25, "FWD Operator: ", run_.OperatorName);
        Line(7, "Calibration Equipment Operator: ", center_.CalibrationCenterOperator);
        Line(19, "Calibration Center: ", center_.CalibrationCenter);
        const ProgramVersion version = VersionOfProgram();
        Line(20, "Bellmark Version: ", version.number + " - " + version.buildDate);
        Blank();
    }

    void WriteSensors() {
        Line(7, "    Serial   Stand    Average Def.  Std.Dev. Initial  Interim   Means  Rel. Trial ");
        Line(7, run_.EnglishUnits ? "No. Number  Position     (mils)      (mils)   Gain      Gain    Ratio     Gain"
                                  : "No. Number  Position   (microns)   (microns)  Gain      Gain    Ratio     Gain");
        for (int sensor = 0; sensor < static_cast<int>(SensorCount(run_)); ++sensor) WriteSensor(sensor);
        Blank();
    }

    /// The serial number ends before the stand position. A long one begins further to the left, and so does the
    /// sensor's number.
    void WriteSensor(int index) {
        constexpr std::size_t usualLength = 9;
        constexpr int numberColumn = 7;
        const SensorCalRecord& sensor = run_.Sensor.at(static_cast<std::size_t>(index));
        const RelativeTrialRecord& trial = sensor.RelTrial.at(trial_);
        const std::size_t length = CharacterCount(sensor.SerialNumber);
        const int shift = static_cast<int>(length > usualLength ? length - usualLength : 0);
        text_.At(std::max(1, numberColumn - shift), FormatText(NumberText(ShownSensorNumber(run_, index)), "@@"));
        text_.Then("  ").Then(sensor.SerialNumber);
        if (trial.Position > 0) Number(22, NumberText(trial.Position));
        Number(31, Format(trial.Average, deflection_));
        Number(45, Format(trial.StdDev, deflection_));
        Number(53, Format(sensor.InitialGain, gainPicture));
        Number(62, Format(sensor.InterimGain, gainPicture));
        Number(71, Format(trial.AdjFactor, gainPicture));
        Number(80, Format(trial.Gain, gainPicture));
        text_.EndLine();
    }

    void WriteVariance() {
        Line(7, "         Sum of Squares    DOF       MSE       F       P ");
        const auto& rows = table_.rows;
        for (std::size_t source = 0; source + 2 < rows.size(); ++source) WriteSource(rows[source]);
        const VarianceRow& error = rows.at(rows.size() - 2);
        WriteRest(error);
        if (error.meanSquare) Number(41, Format(*error.meanSquare, squaresPicture));
        text_.EndLine();
        WriteRest(rows.back());
        text_.EndLine();
        Blank();
        Line(7, "Std Error: ", Format(table_.standardError, deflection_) + (run_.EnglishUnits ? " mils" : " microns"));
    }

    void WriteSource(const VarianceRow& row) {
        text_.At(7, row.source);
        Number(19, Format(row.sumOfSquares, squaresPicture));
        if (row.degreesOfFreedom) Number(35, NumberText(*row.degreesOfFreedom));
        if (row.meanSquare) Number(41, Format(*row.meanSquare, squaresPicture));
        if (row.F) Number(50, Format(*row.F, "#0.00"));
        if (row.P) Number(58, Format(100 * *row.P, "0.00") + " Percent");
        text_.EndLine();
    }

    void WriteRest(const VarianceRow& row) {
        text_.At(7, row.source);
        Number(19, Format(row.sumOfSquares, squaresPicture));
        if (row.degreesOfFreedom) Number(33, NumberText(*row.degreesOfFreedom));
    }

    static constexpr const char* gainPicture = "0.0000";
    static constexpr const char* squaresPicture = "#0.0000";

    ColumnText text_;
    const CalibrationRun& run_;
    const CenterConfig& center_;
    std::size_t trial_;
    const RelativeReportFacts& facts_;
    const VarianceTable table_;
    const char* deflection_;
};

}  // namespace

std::string RelativeReportName(const CalibrationRun& run, std::size_t trial, DateTime today) {
    // File names hold about 200 characters.
    constexpr std::size_t longestSerial = 120;
    return FileNameOf(FirstCharacters(run.DeviceSerialNumber, longestSerial) + ' ' + Format(today, "dd-mm-yyyy") + ' ' +
                      NumberText(trial + 1) + ".RL");
}

std::string PrintReportRel(const CalibrationRun& run, const CenterConfig& center, std::size_t trial,
                           const RelativeReportFacts& facts, const AnalysisWarning& warn) {
    return Report(run, center, trial, facts, warn).Text();
}

}  // namespace bellmark
