#pragma once

#include <optional>
#include <string>

#include "platform/files.h"

namespace bellmark {

class ProfileStrings;
class Program;

/// Whether a file of the FWD replaces all that is known of it, adds to what the files before it told (the three files
/// of a JILS), or is the run's own, which goes on.
enum class FWDReading { Fresh, Added, Resumed };

/// Takes an FWD's configuration from a PDDX file into the run's document and record. A fresh reading forgets the FWD
/// that was known before: what the file does not tell is empty. What a file tells of a calibration center stays out of
/// the document, but for the accelerometer's former slope factor. Nothing, after a box, when the file cannot be used
/// and nothing was taken; otherwise what is doubtful in it, in words, or an empty text.
std::optional<std::string> ReadFWDConfiguration(Program& program, const Path& path, FWDReading reading);
/// The same from what was read already: a second reading may fail, or find another file.
std::optional<std::string> ReadFWDConfiguration(Program& program, const ProfileStrings& strings, FWDReading reading);

}  // namespace bellmark
