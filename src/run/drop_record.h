#pragma once

#include <cstdint>
#include <vector>

#include "platform/date_time.h"

namespace bellmark {

inline constexpr std::size_t sampleCapacity = 15001;  ///< indexes 0 to 15000
inline constexpr int samplesPerSecond = 15000;

/// The drop in hand: its samples and the results found in them. Arrays are indexed by sample, at time i / 15000 s. The
/// same arrays carry different quantities for the accelerometer and the load cell.
struct DropRecord {
    std::vector<float> RawVolts = std::vector<float>(sampleCapacity);
    int NumSamples = 0;
    std::vector<double> AbsAccel = std::vector<double>(sampleCapacity);  ///< g
    std::vector<double> RelAccelMicrons = std::vector<double>(sampleCapacity);
    std::vector<double> RelAccelG = std::vector<double>(sampleCapacity);  ///< load cell: volts times shunt multiplier
    std::vector<double> Velocity = std::vector<double>(sampleCapacity);   ///< load cell: total load, pounds
    std::vector<double> Displacement = std::vector<double>(sampleCapacity);  ///< load cell: zeroed load, pounds
    std::vector<double> AccelSD25 = std::vector<double>(sampleCapacity);
    std::vector<double> AccelSD100 = std::vector<double>(sampleCapacity);
    std::vector<double> VelocitySD25 = std::vector<double>(sampleCapacity);

    double PeakEnglish = 0;  ///< mils, or pounds
    double PeakMetric = 0;   ///< microns, or kN
    int PeakIndex = 0;
    int StartPulseIndex = 0;
    double RiseTime = 0;  ///< ms
    int FulcrumIndex = 0;
    int DeflectionFulcrumIndex = 0;
    int LoadStartIndex = 0;
    int ZeroStartIndex = 0;
    int ZeroEndIndex = 0;
    int ZeroPlotStart = 0;
    int ZeroPlotEnd = 0;
    bool ExcessNoise = false;
    double MaxAbsAccel = 0;
    double MinAbsAccel = 0;
    double BurstAverage = 0;
    double BurstStdDev = 0;
    double BurstAbsAccel = 0;
    DateTime BurstTime{};
    DateTime TriggerTime{};
    double ZeroNoiseLimit = 0;  ///< microns, or pounds
    double TriggerLevel = 0;    ///< g, or the load cell's unit
    int TriggerCount = 0;
    double LastTriggerValue = 0;  ///< the last value that CheckTrigger looked at, for display

    // Accelerometer alone
    double UpperTrigger = 0;           ///< g: samples above it count towards the trigger
    double LowerTrigger = 0;           ///< g: samples below it count towards the trigger
    double BaselineAccel = 0;          ///< acceleration taken as no motion, g
    double PreFulcrumAverage = 0;      ///< mean acceleration of the window before the fulcrum, g
    double VelocityOffset = 0;         ///< subtracted from the velocity for the drift after the drop, microns/s
    double VelocityTrim = 0;           ///< subtracted from the velocity for the slope before the fulcrum, microns/s
    int WindowStart = 0;               ///< first sample of the baseline window
    int WindowEnd = 0;                 ///< last sample searched for the peak
    int FirstRiseIndex = 0;            ///< called the trigger reading in the drop's file
    bool NoFulcrum = false;            ///< the scan for a pulse reached the end of the block
    int VelocityFulcrumReading = 0;    ///< FulcrumIndex at the time of the search for the peak
    int DeflectionFulcrumReading = 0;  ///< the same
};

}  // namespace bellmark
