#pragma once

#include <string>

#include "platform/files.h"

/// Names of the files in the program folder and in a run's data folder.
namespace bellmark {

inline constexpr const char* centerConfigName = "BellmarkCenterConfig.ini";
inline constexpr const char* oldCenterConfigName = "BellmarkCenterConfigOld.Ini";
inline constexpr const char* converterName = "Ferrylink.exe";
inline constexpr const char* interimPattern = "InterimCal*.DDX";
inline constexpr const char* interimCopyName = "InterimCal.DDX";

/// The path as it is on disk: file names count without case, as operators' files come from systems where they do. A
/// file that is not there keeps the name it was asked by.
Path ActualPath(const FileSystem& files, const Path& path);

/// The text as a file's name: characters that no system or not every system allows there become "-".
std::string FileNameOf(const std::string& text);

}  // namespace bellmark
