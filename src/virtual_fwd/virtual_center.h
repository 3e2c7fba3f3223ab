#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "app/calibration_run.h"
#include "app/center_config.h"
#include "virtual_fwd/load_pulse.h"

namespace bellmark::virtual_fwd {

/// Which drop of which trial, all counted from 1.
struct DropNumber {
    int trial = 1;
    int height = 1;
    int drop = 1;
    friend auto operator<=>(const DropNumber&, const DropNumber&) = default;
};

struct CenterOptions {
    std::uint64_t seed = 2012;
    double noisePounds = 6;
    double humPounds = 30;
    int heights = 4;
    int drops = 6;
    int trials = 2;
    bool metric = false;        ///< the reference load cell was calibrated in kN, the run is in kN and microns
    bool templateForm = false;  ///< drops as flat lists of volts, in place of saved-drop files
    std::map<DropNumber, Spoil> spoiled;
};

/// The imaginary center's equipment.
CenterConfig VirtualCenter(bool metric, DateTime today);

/// Writes the program folder of the imaginary center: its configuration, and the folder "Review" of a calibration of
/// which configuration, run and drops are there to be gone through again. TruePeaks.txt in that folder lists what each
/// drop really was. Deterministic for a seed but for the dates.
void WriteCenter(FileSystem& files, const Path& programFolder, const CenterOptions& options, DateTime now);

}  // namespace bellmark::virtual_fwd
