#pragma once

#include <string>

#include "run/calibration_run.h"
#include "run/center_config.h"

/// The certificate as plain text, for whoever has no word processor.
namespace bellmark {

class Program;

/// Lines end in CR LF. All lines for three load cell trials are there, with a gain of 0 for those that were not made.
std::string TextCertificate(const CalibrationRun& run, const CenterConfig& center, DateTime today);

/// Writes it in place of the file; an empty path does nothing. Throws FileError.
void WriteTextCertificate(Program& program, const Path& path);

}  // namespace bellmark
