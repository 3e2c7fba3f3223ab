#pragma once

#include "run/calibration_run.h"

/// The run as keys of its interim file. List values are joined by ", "; an index in a key counts from 1.
namespace bellmark {

class ProfileStrings;
struct CenterConfig;

/// Sets the keys in their order. comment: the operator's notes as they are written to the file.
void SetRunKeys(ProfileStrings& strings, const CalibrationRun& run, const std::string& comment, DateTime today);

/// Reads the run from the keys. Missing values are 0 or empty; counts, and the lists with them, are limited to the
/// sizes of the record. A value is cut at 999 characters. NumberSensors must be known already: it gives the number of
/// sensors in the lists. The standard errors of the reference trials have no key and are computed again. Each trial has
/// its own heights, drops and units; without them the length of its list gives its number of drops.
void ReadRunKeys(const ProfileStrings& strings, CalibrationRun& run);

/// Sets the state that the other keys do not hold: readings of the signal conditioner, marks of the drops, heights,
/// drops and units of each trial. These keys are the file's last section, and the last of them marks a complete file.
/// The final records of a calibration do not carry it.
void SetStateKeys(ProfileStrings& strings, const CalibrationRun& run, const CenterConfig& center);

void RemoveStateKeys(ProfileStrings& strings);

/// The standard deviations of the accelerometer's daily calibration, which the center's own keys do not hold.
void ReadDailyDeviations(const ProfileStrings& strings, CenterConfig& center);

/// The file was written completely. Files from before the mark existed have none.
bool HasEndMark(const ProfileStrings& strings);

/// The text of "CalibrationComment" in the file.
std::string ReadCommentKey(const ProfileStrings& strings);

}  // namespace bellmark
