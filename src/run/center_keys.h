#pragma once

#include "platform/files.h"
#include "run/center_config.h"

/// The center's configuration as keys of a PDDX file: of BellmarkCenterConfig.ini itself, and of every file of a run.
namespace bellmark {

class PDDXFile;
class ProfileStrings;

inline constexpr const char* centerSection = "FWD Calibration Center";

/// Takes the configuration out of a document. Absent numbers are 0, absent dates the zero date; an absent shunt
/// multiplier is 1. EnglishUnits belongs to the run and is not taken here. FileName may come out empty.
void ReadCenterKeys(const PDDXFile& document, CenterConfig& center);

/// Sets the keys in their order. Dates have four forms, since each key's readers expect their own. file: the file that
/// the keys are for, which contains its own name.
void SetCenterKeys(ProfileStrings& strings, const CenterConfig& center, bool englishUnits, const Path& file,
                   DateTime now);

/// Sets the keys of the accelerometer's daily calibration alone.
void SetDailyCalibrationKeys(ProfileStrings& strings, const CenterConfig& center);

}  // namespace bellmark
