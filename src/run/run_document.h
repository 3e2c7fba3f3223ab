#pragma once

#include "run/calibration_run.h"
#include "run/center_config.h"

/// The run's own PDDX document: what of the FWD and of the calibration stands in it.
namespace bellmark {

class PDDXFile;
class ProfileStrings;

/// Which gains a document tells: those that the FWD came with, or the new ones where they were accepted. A run that is
/// to be resumed must find the former again.
enum class DocumentGains { Initial, Accepted };

/// Takes the FWD's identity, its sensors and their gains out of a document. Sensors beyond those of the record are left
/// out; a document that tells no number of sensors has none.
void ReadFWDKeys(const PDDXFile& document, CalibrationRun& run);

/// Completes the document with what the run and the center know. file: the one it is written to, which names itself.
void SaveBellmarkDDX(PDDXFile& document, const CalibrationRun& run, const CenterConfig& center, const Path& file,
                     DateTime now, DocumentGains gains);

/// Brings the document up to the day's calibration of the accelerometer and to the gains that were accepted so far. The
/// slope factor that stood there becomes the old one, so that it must be called once for each new calibration.
void UpdateWarmUp(PDDXFile& document, const CalibrationRun& run, const CenterConfig& center, DateTime now);

/// Takes load levels and drops, brought within what a trial's lists hold; what a file does not tell stays as it was.
void ReadSequenceKeys(const ProfileStrings& strings, CalibrationRun& run);

}  // namespace bellmark
