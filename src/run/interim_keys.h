#pragma once

#include "run/calibration_run.h"

/// The run as keys of its interim file. List values are joined by ", "; an index in a key counts from 1.
namespace bellmark {

class ProfileStrings;

/// Sets the keys in their order. comment: what the operator noted, as it is to stand in the file.
void SetRunKeys(ProfileStrings& strings, const CalibrationRun& run, const std::string& comment, DateTime today);

/// Takes the run out of the keys. What is missing is 0 or empty; counts, and with them the lists, are brought within
/// what the record holds. A value longer than 999 characters is cut there. NumberSensors must be known already, since
/// it tells how many sensors the lists are for. The standard errors of the reference trials have no key and are
/// computed again.
void ReadRunKeys(const ProfileStrings& strings, CalibrationRun& run);

/// "CalibrationComment" as it stands in the file.
std::string ReadCommentKey(const ProfileStrings& strings);

}  // namespace bellmark
