#pragma once

#include <string>

#include "run/calibration_run.h"
#include "run/center_config.h"

/// The run's own PDDX document: the FWD's and the calibration's part of it.
namespace bellmark {

class PDDXFile;
class ProfileStrings;

/// Which gains a document holds: the FWD's initial ones, or the new ones where they were accepted. A run to be resumed
/// must find the initial ones again.
enum class DocumentGains { Initial, Accepted };

/// The gain with as many decimals as the FWD's make reads.
std::string GainText(const CalibrationRun& run, double gain);

/// Lists of the document, one text per sensor, joined by ", ". gain: SensorCalRecord::InitialGain or another one.
std::string SensorSerialNumbers(const CalibrationRun& run);
std::string SensorGains(const CalibrationRun& run, double SensorCalRecord::*gain);

/// Takes the FWD's identity, its sensors and their gains out of a document. Sensors beyond the record's size are left
/// out; a document without a number of sensors has none.
void ReadFWDKeys(const PDDXFile& document, CalibrationRun& run);

/// Completes the document from the run and the center. file: the one it is written to, which contains its own name.
void SaveBellmarkDDX(PDDXFile& document, const CalibrationRun& run, const CenterConfig& center, const Path& file,
                     DateTime now, DocumentGains gains);

/// Updates the document with the day's calibration of the accelerometer and the gains accepted so far. The slope factor
/// in it becomes the old one, so this must be called once for each new calibration.
void UpdateWarmUp(PDDXFile& document, const CalibrationRun& run, const CenterConfig& center, DateTime now);

/// Takes load levels and drops, limited to the size of a trial's lists; values missing from the file stay unchanged.
void ReadSequenceKeys(const ProfileStrings& strings, CalibrationRun& run);

}  // namespace bellmark
