#include "results/text_certificate.h"

#include "app/program.h"
#include "app/workflow.h"
#include "platform/format.h"
#include "platform/numbers.h"
#include "run/version.h"

namespace bellmark {

namespace {

constexpr int trialColumns = static_cast<int>(maxTrials);
constexpr int emptyLinesAtEnd = 16;
constexpr const char* gainPicture = "0.000";

void AddLine(std::string& text, const std::string& line) {
    (text += line) += "\r\n";
}

void AddHeading(std::string& text, const CenterConfig& center, DateTime today) {
    AddLine(text, "FWD Calibration");
    AddLine(text, "");
    AddLine(text, "        Calibration Center: " + center.CalibrationCenter);
    // No other location of the center is known.
    AddLine(text, "                  Location: " + center.CalibrationCenter);
    AddLine(text, "           Center Operator: " + center.CalibrationCenterOperator);
    // To be filled in by hand.
    AddLine(text, "              FWD Operator: ");
    AddLine(text, "                 FWD Owner: ");
    AddLine(text, "                  FWD Unit: ");
    AddLine(text, "       Reference Load Cell: " + center.ReferenceLoadCellName);
    AddLine(text, "   Reference Accelerometer: " + center.AccelerometerModelNumber);
    AddLine(text, "       Date of Calibration: " + Format(today, "dd-mmm-yyyy"));
    AddLine(text, "  Date of Last Calibration: ");
    AddLine(text, "Bellmark Software Version: " + VersionOfProgram().number);
    AddLine(text, "");
}

void AddLoadCell(std::string& text, const CalibrationRun& run) {
    AddLine(text, "LOAD CELL CALIBRATION");
    AddLine(text, "");
    AddLine(text, "             Serial Number: " + run.LoadCellSerialNumber);
    AddLine(text, "              Initial Gain: " + Format(run.LoadCellInitialGain, gainPicture));
    AddLine(text, "         Reference Gains");
    for (int trial = 1; trial <= 3; ++trial) {
        const bool isAccepted = trial <= AcceptedLoadCellTrials(run);
        const double gain = isAccepted ? run.LCTrial.at(static_cast<std::size_t>(trial - 1)).Gain : 0;
        AddLine(text, "                   Trial " + NumberText(trial) + ": " + Format(gain, gainPicture));
    }
    AddLine(text, "                Final Gain: " + Format(run.NewLoadCellCalibrationCenterGain, gainPicture));
    AddLine(text, "");
}

/// One column for each possible trial: TextOf for those made, blanks for the others.
template <class TextOf>
void AddTrialColumns(std::string& line, int trials, std::size_t blanks, TextOf textOf) {
    for (int trial = 1; trial <= trialColumns; ++trial) {
        line += trial <= trials ? textOf(trial) : std::string(blanks, ' ');
    }
}

std::string SensorHeading(const CalibrationRun& run) {
    std::string line = "Number      Number        Gain    |";
    AddTrialColumns(line, AcceptedReferenceTrials(run), 8, [](int trial) { return Format(trial, "####    "); });
    line += " Average |";
    AddTrialColumns(line, run.RelTrials, 9, [](int trial) { return Format(trial, " ####    "); });
    return line + "    |  Gain ";
}

std::string SensorLine(const CalibrationRun& run, int sensor) {
    const SensorCalRecord& record = run.Sensor.at(static_cast<std::size_t>(sensor));
    const auto trialAt = [](int trial) { return static_cast<std::size_t>(trial - 1); };
    std::string line = Format(ShownSensorNumber(run, sensor), "  ###  ");
    line += FormatText(record.SerialNumber, "@@@@@@@@@@@@@@@@@;                   ");
    line += Format(record.InitialGain, "  #0.000  ") + " |";
    AddTrialColumns(line, AcceptedReferenceTrials(run), 8,
                    [&](int trial) { return Format(record.RefTrial.at(trialAt(trial)).Gain, "#0.0000 "); });
    line += Format(record.InterimGain, " 0.0000 ") + " | ";
    AddTrialColumns(line, run.RelTrials, 10,
                    [&](int trial) { return Format(record.RelTrial.at(trialAt(trial)).Gain, "  0.0000 "); });
    return line + Format(record.FinalGain, "| 0.0000 ");
}

}  // namespace

std::string TextCertificate(const CalibrationRun& run, const CenterConfig& center, DateTime today) {
    std::string text;
    AddHeading(text, center, today);
    AddLoadCell(text, run);
    AddLine(text, "DEFLECTION SENSOR CALIBRATION");
    AddLine(text, "");
    AddLine(text,
            "Sensor      Serial       Initial  |     - Reference Gains --                |         -- Relative Gains "
            "---          |  Final");
    AddLine(text, SensorHeading(run));
    for (int sensor = 0; sensor < run.NumberSensors; ++sensor) AddLine(text, SensorLine(run, sensor));
    for (int line = 0; line < emptyLinesAtEnd; ++line) AddLine(text, "");
    return text;
}

void WriteTextCertificate(Program& program, const Path& path) {
    if (path.empty()) return;
    ReplaceTextFile(program.Services.files, path, TextCertificate(program.Run, program.Center, program.Now()));
}

}  // namespace bellmark
