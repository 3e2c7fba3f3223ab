#pragma once

#include <optional>
#include <string>
#include <vector>

#include "controls/picture.h"
#include "platform/date_time.h"
#include "results/fwd_history.h"

/// The gains of an FWD over the years, the run's own included.
namespace bellmark {

/// What the operator can choose to see: all sensors, the load cell, or one sensor.
struct ShownGains {
    std::string name;
    std::vector<int> devices;  ///< 0 is the load cell, 1 the first sensor
};
std::vector<ShownGains> GainsToChoose(const CalibrationRun& run);

struct DatedGain {
    DateTime date;
    double gain = 0;
    bool isOfRun = false;
};

/// The gains of a device, the oldest first; 0 is the load cell, 1 the first sensor. A calibration of the same load cell
/// or sensor counts, in whatever place of its list, and where the file has no serial numbers the same place. One
/// without a date or a number is left out. The run's own gain, dated now, comes last as soon as it is computed; a
/// calibration of today with the same gain is the run itself, which was added already.
std::vector<DatedGain> GainsOf(const std::vector<EarlierCalibration>& history, const CalibrationRun& run, int device,
                               DateTime now);

/// Slope of the line of least squares through the gains over time, as a fraction of their mean for each year of
/// 365.25 days. Nothing with fewer than two days. No limit is set to it: what it means is for the operator to judge
/// (AASHTO R32, third acceptance criterion).
std::optional<double> ChangePerYear(const std::vector<DatedGain>& gains);

/// One marker for each gain, the limits of the final gain as lines, and a mark at the run. Empty without any gain.
Plot HistoryPlot(const std::vector<EarlierCalibration>& history, const CalibrationRun& run, const ShownGains& shown,
                 DateTime now);

/// "5 calibrations, 2008 to 2012: gain 0.9980 to 1.0040, on average +0.10% a year." Of one device;
/// otherwise advice. Then the limits of the final gain.
std::string TrendText(const std::vector<EarlierCalibration>& history, const CalibrationRun& run,
                      const ShownGains& shown, DateTime now);

/// "New gains: load cell 0.998; sensors 1: 1.002, 2: 0.997." What the run has computed so far.
std::string NewGainsText(const CalibrationRun& run, DateTime now);

}  // namespace bellmark
