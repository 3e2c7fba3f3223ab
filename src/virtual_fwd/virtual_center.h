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

/// What of the FWD is asked for; what is not asked for follows make, units and the seed.
struct FWDOptions {
    FWDMake make = MakeNamed("dynatest").value();
    std::optional<double> trueGain;  ///< else drawn within 0.985..1.015
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
    bool metric = false;        ///< the reference load cell was calibrated in kN, the run is in kN and microns
    bool templateForm = false;  ///< drops as flat lists of volts, in place of saved-drop files
    std::map<DropNumber, Spoil> spoiled;
    double accelNoiseVolts = 0.0008;
    double accelDriftVoltsPerSecond = 0.0004;  ///< the most, in either direction
    std::map<DropNumber, AccelSpoil> spoiledReference;
    FWDOptions fwd;
};

/// The imaginary center's equipment.
CenterConfig VirtualCenter(bool metric, DateTime today);

/// Its reference load cell, with the coefficients that the center knows of it in pounds, and the conditioner as it is
/// today: its gain is a little low, the shunt multiplier makes up for it.
LoadCellModel VirtualLoadCell();

/// The FWD that is calibrated there. Takes one random number, whether the true gain is drawn or given; its sensors'
/// gains are of a stream of their own.
VirtualFWD MakeFWD(const CenterOptions& options, Random& random);

/// One drop as the mass makes it: its peak near the height's target, in what the options ask for.
PulseModel DrawPulse(const CenterOptions& options, const DropNumber& number, Random& random);

/// The same for the deflection sensors. The random numbers are a stream of their own: what is drawn for the load cell
/// stays as it is.
AccelPulseModel DrawAccelPulse(const CenterOptions& options, const DropNumber& number, Random& random);

/// The drop as the FWD's sensors see it beside the accelerometer.
StandDrop StandDropOf(const DropNumber& number, const AccelPulseModel& pulse);

/// The 40 drops of a relative trial, at the highest height. They rise a little from first to last, since the buffers
/// that the mass falls on grow warm.
std::vector<StandDrop> DrawRelativeDrops(const CenterOptions& options, int trial, Random& random);

/// Writes the program folder of the imaginary center: its configuration; the folder "Review" of a calibration of which
/// configuration, run and drops are there to be gone through again; the folder "FWD" with what the FWD wrote of the
/// same drops, and of those of relative trials. Review/TruePeaks.txt lists what each drop really was, FWD/TrueGains.txt
/// what a calibration should find.
/// Deterministic for a seed but for the dates.
void WriteCenter(FileSystem& files, const Path& programFolder, const CenterOptions& options, DateTime now);

}  // namespace bellmark::virtual_fwd
