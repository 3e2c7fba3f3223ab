#include "reference/accel_drop_file.h"

#include <array>
#include <span>

#include "platform/format.h"
#include "platform/numbers.h"
#include "reference/drop_text.h"
#include "run/trial.h"

namespace bellmark {

namespace {

constexpr const char* timePicture = "hh:mm:ss";
constexpr const char* burstPicture = "0.000000";
constexpr std::array<SampleColumn, 5> columns{{{22, "Volts,", 4},
                                               {36, "Acceleration(g),", 4},
                                               {53, "Rel.Accel.(µm/sec²),", 4},
                                               {70, "Velocity(µm/sec),", 4},
                                               {86, "Displacement(µm)", 4}}};

void AddAccelerometer(std::string& text, const CenterConfig& center) {
    AddLine(text, "Accelerometer Serial Number = " + center.AccelerometerSerialNumber);
    AddLine(text,
            "Accelerometer Reference Calibration Date = " + Format(center.AccelReferenceCalibrationDate, "m/d/yyyy"));
    AddLine(text, "Cert. +G DC (V)=" + NumberText(center.AccelRefPlus1GDC));
    AddLine(text, "Cert. -G DC (V)=" + NumberText(center.AccelRefMinus1GDC));
    AddLine(text, "B(g) = " + NumberText(center.AccelB) + ", A1(g/V) = " + NumberText(center.AccelA1) +
                      ", A2(g/V^2) = " + NumberText(center.AccelA2) + ", A3(g/V^3) = " + NumberText(center.AccelA3));
    AddLine(text, "Accelerometer Daily Calibration Date and Time = " +
                      Format(center.AccelDailyCalibrationDate, "dd-mmm-yyyy") + ' ' +
                      Format(center.AccelDailyCalibrationTime, timePicture));
    AddLine(text, "Daily +G DC (V)=" + NumberText(center.AccelDailyCalibrationPlus1GVoltage));
    AddLine(text, "Daily -G DC (V)=" + NumberText(center.AccelDailyCalibrationMinus1GVoltage));
    AddLine(text, "");
}

void AddFindings(std::string& text, const DropRecord& drop) {
    AddLine(text, "Peak Value (mils) = " + NumberText(drop.PeakEnglish));
    AddLine(text, "Peak Value (microns) = " + NumberText(drop.PeakMetric));
    AddLine(text, "Trigger Reading = " + NumberText(drop.FirstRiseIndex));
    AddLine(text, "Trigger Data TimeStamp = " + Format(drop.TriggerTime, timePicture));
    AddLine(text, "Velocity Fulcrum Reading = " + NumberText(drop.VelocityFulcrumReading));
    AddLine(text, "Defelection Fulcrum Reading = " + NumberText(drop.DeflectionFulcrumReading));
    AddLine(text, "Start Pulse Reading = " + NumberText(drop.StartPulseIndex));
    AddLine(text, "Peak Sample Number = " + NumberText(drop.PeakIndex + 1));
    AddLine(text, "Pulse Rise Time (mSec) = " + NumberText(drop.RiseTime));
    AddLine(text, "");
}

void AddBurst(std::string& text, const DropRecord& drop) {
    AddLine(text, "Initial Burst Average (volts) = " + NumberText(drop.BurstAverage));
    AddLine(text, "Initial Burst Std.Dev (volts) = " + NumberText(drop.BurstStdDev));
    AddLine(text, "Initial Burst TimeStamp = " + Format(drop.BurstTime, timePicture));
    AddLine(text, "Initial Burst Abs.Acceleration (g) = " + Format(drop.BurstAbsAccel, burstPicture));
    AddLine(text, "Average Accel 25 mSec prior to fulcrum (g) = " + Format(drop.PreFulcrumAverage, burstPicture));
    AddLine(text, "");
}

void AddSample(std::string& text, const DropRecord& drop, std::size_t i) {
    // Samples 0 and 1 have no velocity and displacement: the integration does not reach sample 0.
    const std::size_t fields = i < 2 ? 3 : 5;
    const std::array<double, columns.size()> values{static_cast<double>(drop.RawVolts[i]), drop.AbsAccel[i],
                                                    drop.RelAccelMicrons[i], drop.Velocity[i], drop.Displacement[i]};
    AddSampleRow(text, i, columns, std::span(values).first(fields));
}

}  // namespace

std::string AccelDropFileName(const CalibrationRun& run) {
    return DropFileName(Procedure::Sensors, run.RefTrials + 1, {run.CurrentHeightIndex, run.CurrentDropIndex});
}

std::string AccelDropFileText(const DropRecord& drop, const CalibrationRun& run, const CenterConfig& center,
                              DateTime now) {
    constexpr std::size_t lineLength = 100;
    std::string text;
    text.reserve(2000 + lineLength * static_cast<std::size_t>(drop.NumSamples));
    AddLine(text, "Sensor Reference Calibration");
    AddDropHeading(text, run, center, now);
    AddLine(text, AccelDropFileName(run));
    AddAccelerometer(text, center);
    AddFindings(text, drop);
    AddBurst(text, drop);
    AddSampleHeading(text, 9, "Time(sec),", columns);
    for (std::size_t i = 0; i < static_cast<std::size_t>(drop.NumSamples); ++i) AddSample(text, drop, i);
    return text;
}

}  // namespace bellmark
