#include "reference/drop_file.h"

#include <array>

#include "platform/format.h"
#include "platform/numbers.h"
#include "reference/drop_text.h"
#include "run/trial.h"

namespace bellmark {

namespace {

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

constexpr std::array<SampleColumn, 3> columns{
    {{22, "Volts,", 4}, {36, "Total Load (lbs),", 7}, {53, "Zeroed Load (lbs)", 7}}};

void AddSample(std::string& text, const DropRecord& drop, std::size_t i) {
    const std::array<double, columns.size()> values{static_cast<double>(drop.RawVolts[i]), drop.Velocity[i],
                                                    drop.Displacement[i]};
    AddSampleRow(text, i, columns, values);
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
    AddDropHeading(text, run, center, now);
    AddLine(text, LoadDropFileName(run));
    AddReferenceLoadCell(text, center);
    AddFindings(text, drop, center);
    AddSampleHeading(text, 10, "Time (sec),", columns);
    for (std::size_t i = 0; i < static_cast<std::size_t>(drop.NumSamples); ++i) AddSample(text, drop, i);
    return text;
}

}  // namespace bellmark
