#pragma once

#include <optional>
#include <string>

#include "platform/files.h"

namespace bellmark {

class ProfileStrings;
class Program;

/// Whether a file of the FWD replaces all that is known of it, adds to the files before it (the three files of a JILS),
/// or is the file of the run itself, which goes on.
enum class FWDReading { Fresh, Added, Resumed };

/// Takes an FWD's configuration from a PDDX file into the run's document and record. A fresh reading forgets the FWD
/// known before: what the file lacks is empty. The file's keys of a calibration center stay out of the document, except
/// for the accelerometer's former slope factor. Returns nothing, after a box, when the file cannot be used; nothing was
/// taken then. Otherwise returns the doubts about the file in words, or an empty text.
std::optional<std::string> ReadFWDConfiguration(Program& program, const Path& path, FWDReading reading);
/// The same from strings already read: a second reading may fail, or find another file.
std::optional<std::string> ReadFWDConfiguration(Program& program, const ProfileStrings& strings, FWDReading reading);

}  // namespace bellmark
