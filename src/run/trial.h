#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "analysis/analysis.h"
#include "run/calibration_run.h"

/// The life of a trial: it begins empty, takes one peak per drop, is counted when the FWD's file is asked for, and is
/// then accepted or rejected. In procedure LoadCell it is a trial of the load cell, in procedure Sensors one of all
/// deflection sensors. A device is the load cell, or a sensor by its index from 0.
namespace bellmark {

inline bool CalibratesSensors(const CalibrationRun& run) {
    return run.CurrentProcedure == Procedure::Sensors;
}

// ---- drops

/// Height and drop of an index in the trial's order, both counted from 1.
struct DropPlace {
    int height = 1;
    int drop = 1;
    friend bool operator==(const DropPlace&, const DropPlace&) = default;
};
DropPlace PlaceOf(const TrialShape& shape, int index);

/// Name of a drop's file: "LoadCell2-H3D1.txt" or "Reference2-H3D1.txt". number: of the trial, from 1.
std::string DropFileName(Procedure procedure, int number, const DropPlace& place);
/// Start of the file names of all drops of a trial: "LoadCell2-H".
std::string DropFilePrefix(Procedure procedure, int number);

/// Index of the drop on the drop screen: the next one to be taken, or the one being reviewed.
int DropShown(const TrialInHand& trial);
/// Number, from 1, of the trial of that drop.
int NumberOfTrialShown(const CalibrationRun& run);

// ---- the trial in hand

/// The trial that would begin now, without drops.
TrialInHand TrialOfSetup(const CalibrationRun& run);

/// Drops were taken, and for the same trial that the run would begin now: same procedure, number, heights, drops and
/// units.
bool IsTrialInHand(const CalibrationRun& run);

/// Begins an empty trial with the heights, drops and units of the set-up.
void BeginTrial(CalibrationRun& run);

/// What is kept of a drop besides its peak.
struct DropMarks {
    bool excessNoise = false;
    bool outOfRange = false;
};
/// Takes the peak of the next drop, in the trial's units. Does nothing when all drops are in.
void TakePeak(TrialInHand& trial, double peak, const DropMarks& marks);

inline bool IsComplete(const TrialInHand& trial) {
    return trial.DropSequenceIndex >= trial.shape.Drops();
}

/// Begins the review of a drop. The trial itself does not change.
void BeginReview(TrialInHand& trial, int index, bool isCounted);
void EndReview(TrialInHand& trial);

/// Counts the trial: every device gets a record with the reference's peaks; the FWD's are added later.
void CountTrial(CalibrationRun& run);

/// Takes the last counted trial, neither accepted nor rejected, in hand again: its peaks, heights, drops, units and
/// noise marks. It is no longer counted.
void TakeUpCountedTrial(CalibrationRun& run);

/// Removes the last counted trial and its records.
void DropCountedTrial(CalibrationRun& run);

/// Ends the trial in hand after it was accepted or rejected.
void LeaveTrial(CalibrationRun& run);

// ---- what was counted

/// Trials of the deflection sensors, or of the load cell, rest on what the set-up says of them: number and gains.
bool HasSensorTrials(const CalibrationRun& run);
bool HasLoadCellTrials(const CalibrationRun& run);

/// The earlier trial, from 1, of which the FWD's peaks are those of the last counted one; 0 for none. Two trials never
/// measure the same to the last digit: it is the file of the other trial.
int TrialWithSamePeaks(const CalibrationRun& run);

int& TrialCount(CalibrationRun& run);
int TrialCount(const CalibrationRun& run);
std::size_t DevicesInTrial(const CalibrationRun& run);

/// Record of a device in the last counted trial. Throws std::out_of_range when no trial was counted.
TrialRecord& TrialOf(CalibrationRun& run, std::size_t device);
const TrialRecord& TrialOf(const CalibrationRun& run, std::size_t device);

const std::string& SerialNumberOf(const CalibrationRun& run, std::size_t device);
double InitialGainOf(const CalibrationRun& run, std::size_t device);

/// The sensor that many places further on, wrapping around; step: at most the number of sensors.
std::size_t NeighbourSensor(const CalibrationRun& run, std::size_t sensor, int step);

/// Fit of the reference's peaks on those of the device, over the drops of the trial in hand.
OriginRegression RegressionOf(const CalibrationRun& run, std::size_t device);

/// Fits, and stores adjustment factor, standard error and gain with the trial: the gain is the device's initial one
/// times the adjustment factor, in a second trial too (AASHTO R32).
OriginRegression CalibrateDevice(CalibrationRun& run, std::size_t device);

// ---- statistics of the heights

/// Mean and sample standard deviation of the peaks of a height, in their units.
struct PeakStatistics {
    double mean = 0;
    double stdDev = 0;
};

/// One for each height that has at least one peak. peaks: of a trial, from its first drop, possibly incomplete.
std::vector<PeakStatistics> StatisticsOfHeights(const TrialShape& shape, std::span<const double> peaks);

/// Mean and standard deviation of every height of the trial in hand, of the reference and of one device of the FWD.
std::array<HeightStatistics, maxHeights> HeightStats(const CalibrationRun& run, std::size_t device);

/// Largest standard deviation to be expected within a height, in the units of the mean (mils or microns for sensors,
/// pounds or kN for the load cell). It is advice; no drop is rejected by it.
double HeightVariationLimit(Procedure procedure, bool englishUnits, double mean);

/// The scatter of the reference's and of the FWD's peaks within a height differ by more than a factor of 3. For sensors
/// both must be above the noise floor; for the load cell one at or above it is enough. Deviations are in the units of
/// the trial (mils or microns, pounds or kN).
bool ScatterDiffers(const HeightStatistics& height, bool sensors, bool englishUnits);

}  // namespace bellmark
