#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>

#include "run/center_config.h"
#include "virtual_fwd/accel_pulse.h"
#include "virtual_fwd/drop_number.h"
#include "virtual_fwd/fwd_documents.h"
#include "virtual_fwd/load_pulse.h"
#include "virtual_fwd/sensor_trials.h"

namespace bellmark::virtual_fwd {

/// Options of the FWD; missing values follow from make, units and seed.
struct FWDOptions {
    FWDMake make = MakeNamed("dynatest").value();
    std::optional<double> trueGain;  ///< otherwise drawn within 0.985..1.015
    double initialGain = 1;          ///< FWDs keep four decimals of it
    double scatter = 0.001;
    double offsetPounds = 0;
    std::optional<LoadForm> loads;
    std::optional<double> loadResolution;
    std::optional<DeflectionForm> deflections;
    std::optional<double> deflectionResolution;
    std::set<DropNumber> badReadings;
    SensorOptions sensors;
};

struct CenterOptions {
    std::uint64_t seed = 2012;
    double noisePounds = 6;
    double humPounds = 30;
    int heights = 4;
    int drops = 6;
    int trials = 2;             ///< of the load cell
    int referenceTrials = 0;    ///< of the deflection sensors
    bool metric = false;        ///< reference load cell calibrated in kN, the run in kN and microns
    bool templateForm = false;  ///< drops as flat lists of volts instead of saved-drop files
    std::map<DropNumber, Spoil> spoiled;
    double accelNoiseVolts = 0.0008;
    double accelDriftVoltsPerSecond = 0.0004;  ///< the largest, in either direction
    std::map<DropNumber, AccelSpoil> spoiledReference;
    bool live = false;  ///< with the live demonstration board, whose drops those of the FWD's files are
    FWDOptions fwd;
};

/// The imaginary center's equipment.
CenterConfig VirtualCenter(bool metric, DateTime today);

/// Its reference load cell, with the center's coefficients in pounds, and the conditioner as it is today: its gain is a
/// little low, and the shunt multiplier corrects it.
LoadCellModel VirtualLoadCell();

/// The FWD that is calibrated there. Uses one random number, whether the true gain is drawn or given; its sensors'
/// gains have their own random numbers.
VirtualFWD MakeFWD(const CenterOptions& options, Random& random);

/// One drop of the mass: its peak near the height's target, with the faults that the options ask for.
PulseModel DrawPulse(const CenterOptions& options, const DropNumber& number, Random& random);

/// The same for the deflection sensors. It has its own random numbers, so that those of the load cell stay the same.
AccelPulseModel DrawAccelPulse(const CenterOptions& options, const DropNumber& number, Random& random);

/// The same drop for the FWD's sensors beside the accelerometer.
StandDrop StandDropOf(const DropNumber& number, const AccelPulseModel& pulse);

/// The 40 drops of a relative trial, at the highest height. The peaks rise a little from first to last, because the
/// buffers below the mass grow warm.
std::vector<StandDrop> DrawRelativeDrops(const CenterOptions& options, int trial, Random& random);

/// Writes the program folder of the imaginary center: its configuration; the folder "Review" with the configuration,
/// run and drops of a calibration to be reviewed; the folder "FWD" with the FWD's files of the same drops, of
/// relative and of monthly trials. Review/TruePeaks.txt lists the true peak of each drop, FWD/TrueGains.txt the gains
/// that a calibration should find. Deterministic for a seed except for the dates.
void WriteCenter(FileSystem& files, const Path& programFolder, const CenterOptions& options, DateTime now);

}  // namespace bellmark::virtual_fwd
