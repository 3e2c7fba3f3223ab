#pragma once

#include "run/calibration_run.h"

/// The run as keys of its interim file. List values are joined by ", "; an index in a key counts from 1.
namespace bellmark {

class ProfileStrings;
struct CenterConfig;

/// Sets the keys in their order. comment: what the operator noted, as it is to stand in the file.
void SetRunKeys(ProfileStrings& strings, const CalibrationRun& run, const std::string& comment, DateTime today);

/// Takes the run out of the keys. What is missing is 0 or empty; counts, and with them the lists, are brought within
/// what the record holds. A value longer than 999 characters is cut there. NumberSensors must be known already, since
/// it tells how many sensors the lists are for. The standard errors of the reference trials have no key and are
/// computed again. Heights, drops and units of
/// a trial are its own: without them the length of its list tells its number of drops.
void ReadRunKeys(const ProfileStrings& strings, CalibrationRun& run);

/// Sets what the other keys do not tell of a run: readings of the signal conditioner, marks of the drops, heights,
/// drops and units of each trial. These keys are the file's last section, and the last of them is the mark by which a
/// file is known to be whole. The final records of a calibration do not carry it.
void SetStateKeys(ProfileStrings& strings, const CalibrationRun& run, const CenterConfig& center);

void RemoveStateKeys(ProfileStrings& strings);

/// The standard deviations of the accelerometer's daily calibration, which the center's own keys do not give back.
void ReadDailyDeviations(const ProfileStrings& strings, CenterConfig& center);

/// The file was written to its end. Files of before the mark was known have none.
bool HasEndMark(const ProfileStrings& strings);

/// "CalibrationComment" as it stands in the file.
std::string ReadCommentKey(const ProfileStrings& strings);

}  // namespace bellmark
