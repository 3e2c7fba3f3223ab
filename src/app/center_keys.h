#pragma once

#include "app/center_config.h"
#include "platform/files.h"

/// The center's configuration as keys of a PDDX file: of BellmarkCenterConfig.ini itself, and of every file of a run.
namespace bellmark {

class PDDXFile;
class ProfileStrings;
class Program;

inline constexpr const char* centerSection = "FWD Calibration Center";

/// Takes the configuration out of a document. Absent numbers are 0, absent dates the zero date; an absent shunt
/// multiplier is
/// 1. EnglishUnits is the run's and not taken here. FileName may come out empty.
void ReadCenterKeys(const PDDXFile& document, CenterConfig& center);

/// Sets the keys in their order. The four forms of dates differ since each key's readers expect theirs.
/// file: the file that the keys are for, which names itself.
void SetCenterKeys(ProfileStrings& strings, const CenterConfig& center, bool englishUnits, const Path& file,
                   DateTime now);

/// Sets the keys in a file and leaves all else in it. Throws FileError.
void WriteCenterDataToPDDX(Program& program, const Path& path);

/// Sets one key of a file. Throws FileError.
void WriteKey(Program& program, const Path& path, std::string_view section, std::string_view key,
              std::string_view value);

/// The master copy beside the program, and the copy of the run in hand; one and the same before a run has a name.
Path MasterCenterConfig(const Program& program);
Path RunCenterConfig(const Program& program);

}  // namespace bellmark
