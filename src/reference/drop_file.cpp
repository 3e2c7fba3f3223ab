#include "reference/drop_file.h"

#include <vector>

#include "platform/format.h"
#include "platform/numbers.h"
#include "run/trial.h"

namespace bellmark {

namespace {

/// Time step of the samples as the integrations use it, a single-precision constant: seconds.
constexpr float secondsPerSample = 6.666667E-05F;

/// Fills a line up to a column, counted from 1, as a tab stop does.
class Line {
  public:
    explicit Line(std::string& text) : text_(text), start_(text.size()) {}
    void TabTo(std::size_t column) {
        const std::size_t width = text_.size() - start_;
        if (width < column - 1) text_.append(column - 1 - width, ' ');
    }

  private:
    std::string& text_;
    std::size_t start_;
};

void AddLine(std::string& text, const std::string& line) {
    (text += line) += "\r\n";
}

void AddHeading(std::string& text, const CalibrationRun& run, const CenterConfig& center, DateTime now) {
    AddLine(text, "FWD Owner = " + run.DeviceOwner);
    AddLine(text, "FWD Name = " + run.DeviceName);
    AddLine(text, "FWD Serial Number = " + run.DeviceSerialNumber);
    AddLine(text, "Date & Time = " + Format(now, "dd-mmm-yyyy, hh:mm:ss"));
    AddLine(text, "FWD Calibration Center Code = " + NumberText(center.CalCenterIDCode));
    AddLine(text, "FWD Calibration Center = " + center.CalibrationCenter);
    AddLine(text, "");
}

void AddReferenceLoadCell(std::string& text, const CenterConfig& center) {
    AddLine(text, "Reference Load Cell = " + center.ReferenceLoadCellName);
    AddLine(text,
            "Reference Load Cell Calibration Date = " + Format(center.ReferenceLoadCellCalibrationDate, "m/d/yyyy"));
    AddLine(text, "Reference Load Cell Calibration Units = " + center.ReferenceLoadCellUnits);
    AddLine(text, "Reference Load Cell Gain = " + center.ReferenceLoadCellGain);
    std::string coefficients;
    for (const double coefficient : center.ReferenceLoadCellCalibrationCoefficients) {
        if (!coefficients.empty()) coefficients += ", ";
        coefficients += NumberText(coefficient);
    }
    AddLine(text, "Reference Load Cell Calibration Coefficients = " + coefficients);
    AddLine(text, "");
}

void AddFindings(std::string& text, const DropRecord& drop, const CenterConfig& center) {
    AddLine(text, "Peak Value (pounds) = " + NumberText(drop.PeakEnglish));
    AddLine(text, "Peak Value (kN) = " + NumberText(drop.PeakMetric));
    AddLine(text, "End of Zero Period Reading Number = " + NumberText(drop.ZeroEndIndex));
    AddLine(text, "Start Pulse Reading Number = " + NumberText(drop.StartPulseIndex));
    AddLine(text, "Peak Reading Number = " + NumberText(drop.PeakIndex + 1));
    AddLine(text, "Pulse Rise Time (mSec) = " + Format(drop.RiseTime, "#0.0"));
    AddLine(text, "Daily Shunt Multiplier = " + Format(center.ShuntCalibrationMultiplier, "0.000"));
    AddLine(text, "");
}

void AddSampleHeading(std::string& text) {
    Line line(text);
    text += "Sample,";
    line.TabTo(10);
    text += "Time (sec),";
    line.TabTo(22);
    text += "Volts,";
    line.TabTo(36);
    text += "Total Load (lbs),";
    line.TabTo(53);
    text += "Zeroed Load (lbs)\r\n";
}

constexpr const char* fourPlaces = "0.0000E+00";
constexpr const char* sevenPlaces = "0.0000000E+00";

/// Number and time of each sample, which are the same in every file: "1,      0.0000E+00,  ".
const std::vector<std::string>& SampleBeginnings() {
    static const std::vector<std::string> beginnings = [] {
        std::vector<std::string> texts(sampleCapacity);
        for (std::size_t i = 0; i < texts.size(); ++i) {
            Line line(texts[i]);
            texts[i] += NumberText(i + 1) + ',';
            line.TabTo(9);
            AppendFormat(texts[i], static_cast<double>(i) * static_cast<double>(secondsPerSample), fourPlaces);
            texts[i] += ',';
            line.TabTo(22);
        }
        return texts;
    }();
    return beginnings;
}

void AddSample(std::string& text, const DropRecord& drop, std::size_t i) {
    Line line(text);
    text += SampleBeginnings()[i];
    AppendFormat(text, static_cast<double>(drop.RawVolts[i]), fourPlaces);
    text += ',';
    line.TabTo(36);
    AppendFormat(text, drop.Velocity[i], sevenPlaces);
    text += ',';
    line.TabTo(53);
    AppendFormat(text, drop.Displacement[i], sevenPlaces);
    text += "\r\n";
}

}  // namespace

std::string LoadDropFileName(const CalibrationRun& run) {
    return DropFileName(Procedure::LoadCell, run.LoadCellRefTrials + 1, {run.CurrentHeightIndex, run.CurrentDropIndex});
}

std::string LoadDropFileText(const DropRecord& drop, const CalibrationRun& run, const CenterConfig& center,
                             DateTime now) {
    constexpr std::size_t lineLength = 70;
    std::string text;
    text.reserve(1000 + lineLength * static_cast<std::size_t>(drop.NumSamples));
    AddLine(text, "Load Cell Calibration");
    AddHeading(text, run, center, now);
    AddLine(text, LoadDropFileName(run));
    AddReferenceLoadCell(text, center);
    AddFindings(text, drop, center);
    AddSampleHeading(text);
    for (std::size_t i = 0; i < static_cast<std::size_t>(drop.NumSamples); ++i) AddSample(text, drop, i);
    return text;
}

}  // namespace bellmark
