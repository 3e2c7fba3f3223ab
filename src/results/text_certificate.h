#pragma once

#include <string>

#include "run/calibration_run.h"
#include "run/center_config.h"

/// The certificate as plain text, for readers without a word processor.
namespace bellmark {

class Program;

/// Lines end in CR LF. There are always lines for three load cell trials, with a gain of 0 for those not made.
std::string TextCertificate(const CalibrationRun& run, const CenterConfig& center, DateTime today);

/// Writes it and replaces the file; does nothing for an empty path. Throws FileError.
void WriteTextCertificate(Program& program, const Path& path);

}  // namespace bellmark
