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
inline constexpr const char* bellmarkName = "Bellmark";
inline constexpr const char* calibrationsName = "Calibrations";
inline constexpr const char* removedFolderName = "Removed";

/// The drive that the owners' and FWDs' folders stand on: of the program folder, or that folder itself where there are
/// no drive letters.
Path DriveRoot(const Path& programFolder);
/// What holds the folders of the owners; in them those of their FWDs.
Path CalibrationsFolder(const Path& programFolder);

/// The path as it is on disk: file names count without case, as operators' files come from systems where they do. A
/// file that is not there keeps the name it was asked by.
Path ActualPath(const FileSystem& files, const Path& path);

/// The text as a file's name: characters that no system or not every system allows there become "-".
std::string FileNameOf(const std::string& text);

}  // namespace bellmark
