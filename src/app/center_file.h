#pragma once

#include <string_view>

#include "platform/files.h"

/// The center's configuration on disk: the master copy beside the program, and the copy of the run in hand.
namespace bellmark {

class Program;

/// Sets the keys in a file and leaves the rest unchanged. Throws FileError.
void WriteCenterDataToPDDX(Program& program, const Path& path);

/// Takes a center's configuration from a file into the program's document and record, and rewrites the copy of the run
/// in hand. The run keeps its units where a trial in hand needs them. False, after a box, when the file cannot be read
/// or is not a center's configuration; nothing changes then.
bool ReadCenterConfiguration(Program& program, const Path& path);

/// Sets the center's own configuration aside before a review puts another one in its place. A file that is not a
/// configuration is not kept. Throws FileError.
void KeepCenterConfiguration(Program& program);

/// Puts back the configuration that was set aside, by this process or by one that was interrupted.
void PutBackCenterConfiguration(Program& program);

/// The center's configuration was approved: the one set aside before is out of date.
void ForgetKeptConfiguration(Program& program);

/// Sets the keys of the accelerometer's daily calibration in a file and leaves the rest unchanged. Throws FileError.
void WriteFlipData(Program& program, const Path& path);

/// Sets one key of a file. Throws FileError.
void WriteKey(Program& program, const Path& path, std::string_view section, std::string_view key,
              std::string_view value);

/// The master copy beside the program, and the copy of the run in hand; both are the same file before a run has a name.
Path MasterCenterConfig(const Program& program);
Path RunCenterConfig(const Program& program);

}  // namespace bellmark
