#include "fwd/trial_report.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "platform/column_text.h"
#include "platform/format.h"
#include "platform/numbers.h"
#include "platform/text.h"
#include "run/accel_adjustment.h"
#include "run/paths.h"
#include "run/trial.h"
#include "run/version.h"

namespace bellmark {

namespace {

constexpr const char* coefficientPicture = "##.00000e+00";

/// Writes one report. Labels end where the values of their block begin; the head of a sensor's report is two columns
/// further to the right than the load cell's.
class Report {
  public:
    Report(const CalibrationRun& run, const CenterConfig& center, std::size_t device, const TrialReportFacts& facts)
        : run_(run),
          shape_(run.Trial.shape),
          stats_(HeightStats(run, device)),
          center_(center),
          device_(device),
          facts_(facts),
          sensors_(CalibratesSensors(run)) {}

    std::string Text() {
        WriteHeading();
        WriteParties();
        if (sensors_) {
            WriteAccelerometer();
        } else {
            WriteLoadCell();
        }
        WriteUnits();
        WriteTable(TrialOf(run_, device_).RefDropData, &HeightStatistics::RefMean, &HeightStatistics::RefStdDev, true);
        WriteDevice();
        WriteTable(TrialOf(run_, device_).DropData, &HeightStatistics::FWDMean, &HeightStatistics::FWDStdDev, false);
        WriteResults();
        return text_.Text();
    }

  private:
    using Column = double HeightStatistics::*;

    int Shifted(int column) const { return sensors_ ? column + 2 : column; }
    void Blank() { text_.EndLine(); }
    /// label: ends before the column where the values begin.
    void Labelled(std::string_view label, std::string_view value) {
        text_.At(Shifted(37) - static_cast<int>(CharacterCount(label)), label).Then(value).EndLine();
    }

    void WriteHeading() {
        text_.At(Shifted(30), "FWD Calibration").EndLine();
        const int trial = TrialCount(run_);
        if (sensors_) {
            text_.At(12, "Reference Deflection Sensor Calibration - Trial ");
        } else {
            text_.At(22, "Load Cell Calibration - Trial ");
        }
        text_.Then(NumberText(trial)).EndLine();
        Blank();
        text_.At(Shifted(27), "Filename: ").Then(facts_.fileName).EndLine();
        text_.At(Shifted(23), "Raw FWD File: ").Then(facts_.rawFileName).EndLine();
        text_.At(Shifted(31), "Date: ").Then(Format(facts_.now, "dd-mmm-yyyy"));
        text_.Then("     Time: ").Then(Format(facts_.now, "hh:nn")).EndLine();
        const bool english = shape_.englishUnits;
        text_.At(Shifted(20), "Air Temperature: ");
        if (const auto celsius = facts_.airTemperature) {
            text_.Then(Format(english ? CelsiusToFahrenheit(*celsius) : *celsius, "##0.0"));
            text_.Then(english ? "\u00B0F" : "\u00B0C");
        }
        text_.EndLine();
        Blank();
    }

    void WriteParties() {
        Labelled("System Under Test: ", run_.DeviceName);
        Labelled("FWD Operator: ", run_.OperatorName);
        Labelled("Calibration Equipment Operator: ", center_.CalibrationCenterOperator);
        Labelled("Calibration Center: ", center_.CalibrationCenter);
        const ProgramVersion version = VersionOfProgram();
        Labelled("Bellmark Version: ", version.number + " - " + version.buildDate);
        Blank();
    }

    /// Blank for an unknown reading: 0 could be taken for a measured value.
    static std::string KnownReading(const std::optional<double>& volts) {
        return volts ? Format(*volts, "#0.000") : std::string();
    }

    void WriteLoadCell() {
        text_.At(5, "REFERENCE LOAD CELL DATA").EndLine();
        Labelled("Load Cell Serial Number: ", center_.ReferenceLoadCellName);
        Labelled("Load Cell Calibration Date: ", Format(center_.ReferenceLoadCellCalibrationDate, "mm-dd-yyyy"));
        Labelled("Load Cell Excitation Voltage: ", NumberText(center_.ReferenceLoadCellExcitationVolts));
        Labelled("Signal Conditioner Gain: ", center_.ReferenceLoadCellGain);
        Labelled("Load Cell Sensitivity: ", NumberText(center_.ReferenceLoadCellSensitivity));
        Labelled("Reference + Calibration Reading: ",
                 Format(center_.ReferenceLoadCellPlusVoltage, "#0.000000") + " volts");
        Labelled("Measured + Calibration Reading: ", KnownReading(run_.MeasuredPlus));
        Labelled("Reference Unbalanced Zero: ", NumberText(center_.ReferenceLoadCellUnbalancedZero));
        Labelled("Measured Unbalanced Zero: ", KnownReading(run_.MeasuredUnbalancedZero));
        const auto& coefficients = center_.ReferenceLoadCellCalibrationCoefficients;
        const auto coefficient = [&](std::size_t index) { return Format(coefficients[index], coefficientPicture); };
        text_.At(5, " Load Cell Regression Coef. A1: ").Then(coefficient(0));
        text_.At(55, " A2: ").Then(coefficient(1)).EndLine();
        text_.At(20, "             A3: ").Then(coefficient(2));
        text_.At(55, " A4: ").Then(coefficient(3)).EndLine();
        text_.At(20, "             A5: ").Then(coefficient(4)).EndLine();
        Blank();
    }

    void WriteAccelerometer() {
        text_.At(5, "REFERENCE ACCELEROMETER DATA").EndLine();
        Labelled("Accelerometer Serial Number: ", center_.AccelerometerSerialNumber);
        Labelled("Accelerometer Daily Calibration Date: ", Format(center_.AccelDailyCalibrationDate, "dd-mmm-yyyy"));
        Labelled("Accelerometer Daily Calibration Time: ", Format(center_.AccelDailyCalibrationTime, "hh:nn"));
        Labelled("Accelerometer Excitation Voltage: ", NumberText(center_.AccelExcitationVolts));
        Labelled("Signal Conditioner Gain: ", center_.AccelGain);
        Labelled("Accelerometer Sensitivity: ", NumberText(center_.AccelSensitivity) + " g");
        Labelled("Accelerometer Daily Cal. Slope: ", Format(center_.AccelVoltageSlope, "#0.0000"));
        Labelled("Accelerometer Reference Cal. Date: ", Format(center_.AccelReferenceCalibrationDate, "dd-mmm-yyyy"));
        const auto& coefficients = center_.AccelRefCalibrationCoefficients;
        const auto coefficient = [&](std::size_t index) { return Format(coefficients[index], coefficientPicture); };
        text_.At(4, "Accelerometer Reference Coef A1: ").Then(coefficient(0));
        text_.At(50, " A2: ").Then(coefficient(1)).EndLine();
        text_.At(33, "A3: ").Then(coefficient(2));
        text_.At(50, " A4: ").Then(coefficient(3)).EndLine();
        Blank();
    }

    void WriteUnits() {
        if (sensors_) {
            text_.At(20, "     All deflections are in ").Then(shape_.englishUnits ? "mils" : "microns");
        } else {
            text_.At(20, "     All loads are in ").Then(shape_.englishUnits ? "Pounds" : "kN");
        }
        text_.EndLine();
        Blank();
    }

    static const char* PictureOf(double value) {
        const double size = std::abs(value);
        if (size < 10) return "0.00";
        if (size < 100) return "00.00";
        if (size < 1000) return "000.0";
        return size < 10000 ? "0,000.0" : "#,000.0";
    }

    void WriteTable(const std::array<double, maxDrops>& peaks, Column mean, Column deviation, bool marksNoise) {
        const int heights = shape_.heights;
        const int drops = shape_.dropsPerHeight;
        for (int height = 1; height <= heights; ++height) text_.At(10 * height + 19, "Ht " + NumberText(height));
        text_.EndLine();
        text_.At(5, "Repeat Drop #").EndLine();
        for (int drop = 1; drop <= drops; ++drop) {
            text_.At(18, NumberText(drop));
            for (int height = 1; height <= heights; ++height) {
                const auto index = static_cast<std::size_t>((height - 1) * drops + drop - 1);
                text_.At(10 * height + 18, Format(peaks.at(index), PictureOf(peaks.at(index))));
                if (marksNoise && run_.Trial.DropNoiseFlags.at(index)) text_.Then("*");
            }
            text_.EndLine();
        }
        for (int height = 1; height <= heights; ++height) text_.At(10 * height + 20, "---------");
        text_.EndLine();
        WriteStatistics(18, "Mean", mean);
        WriteStatistics(15, "Std.Dev", deviation);
        if (marksNoise) text_.At(5, "* Drops with excess noise").EndLine();
        Blank();
    }

    void WriteStatistics(int labelColumn, std::string_view label, Column member) {
        text_.At(labelColumn, label);
        for (int height = 1; height <= shape_.heights; ++height) {
            const double value = stats_.at(static_cast<std::size_t>(height - 1)).*member;
            text_.At(10 * height + 18, Format(value, PictureOf(value)));
        }
        text_.EndLine();
    }

    /// label: ends in column 35; the value is in column 40.
    void Result(std::string_view label, std::string_view value) {
        text_.At(36 - static_cast<int>(CharacterCount(label)), label).At(40, value).EndLine();
    }

    void WriteDevice() {
        text_.At(sensors_ ? 9 : 5, sensors_ ? "FWD DEFLECTION SENSOR DATA" : "FWD LOAD CELL DATA").EndLine();
        Result(sensors_ ? "FWD Sensor Serial Number:" : "FWD Load Cell Serial Number:", SerialNumberOf(run_, device_));
        Result(sensors_ ? "OLD Sensor Gain Factor:" : "OLD Load Cell Gain:",
               Format(InitialGainOf(run_, device_), "0.0000"));
        Blank();
    }

    void WriteResults() {
        const TrialRecord& trial = TrialOf(run_, device_);
        text_.At(5, "Calibration Results -").EndLine();
        text_.At(18, "Adjustment Factor:").At(40, Format(trial.AdjFactor, "0.0000")).EndLine();
        text_.At(6, "Standard Error of Adj. Factor:").At(40, Format(trial.StdErrAdjFactor, "0.0000")).EndLine();
        if (sensors_) {
            text_.At(7, "Sensor Calibration Gain Factor:");
        } else {
            text_.At(6, "        Load Cell Gain Factor:");
        }
        text_.At(40, Format(trial.Gain, "0.0000")).EndLine();
    }

    ColumnText text_;
    const CalibrationRun& run_;
    const TrialShape& shape_;
    const std::array<HeightStatistics, maxHeights> stats_;
    const CenterConfig& center_;
    std::size_t device_;
    const TrialReportFacts& facts_;
    bool sensors_;
};

}  // namespace

namespace {

/// A file name has room for some 200 letters. A long serial number is cut there; the device's position distinguishes
/// two that begin alike.
std::string ShortSerial(const std::string& serial, std::size_t device) {
    constexpr std::size_t longest = 60;
    if (CharacterCount(serial) <= longest) return serial;
    return FirstCharacters(serial, longest) + '~' + NumberText(device + 1);
}

}  // namespace

std::string TrialReportName(const CalibrationRun& run, std::size_t device, DateTime today) {
    const char* kind = CalibratesSensors(run) ? ".RF" : ".LC";
    return FileNameOf(ShortSerial(run.DeviceSerialNumber, device) + ' ' + Format(today, "dd-mmm-yyyy") + ' ' +
                      ShortSerial(SerialNumberOf(run, device), device) + kind + NumberText(TrialCount(run)));
}

std::string TrialReportText(const CalibrationRun& run, const CenterConfig& center, std::size_t device,
                            const TrialReportFacts& facts) {
    return Report(run, center, device, facts).Text();
}

}  // namespace bellmark
