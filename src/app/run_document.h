#pragma once

#include "app/calibration_run.h"

/// The run's own PDDX document: what of the FWD and of the calibration stands in it.
namespace bellmark {

class PDDXFile;
class ProfileStrings;

/// Takes the FWD's identity, its sensors and their gains out of a document. Sensors beyond those of the record are left
/// out; a document that tells no number of sensors has none.
void ReadFWDKeys(const PDDXFile& document, CalibrationRun& run);

/// Takes load levels and drops, brought within what a trial's lists hold; what a file does not tell stays as it was.
void ReadSequenceKeys(const ProfileStrings& strings, CalibrationRun& run);

}  // namespace bellmark
