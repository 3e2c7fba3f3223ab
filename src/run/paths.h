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

/// The drive that holds the owners' and FWDs' folders: that of the program folder, or the program folder itself where
/// there are no drive letters.
Path DriveRoot(const Path& programFolder);
/// The folder of all owners' folders, which hold those of their FWDs.
Path CalibrationsFolder(const Path& programFolder);

/// The path as it is on disk. File names compare without case, because operators' files come from systems where they
/// do. A missing file keeps the name that was asked for.
Path ActualPath(const FileSystem& files, const Path& path);

/// The text as a file name: characters that are not allowed on every system become "-".
std::string FileNameOf(const std::string& text);

}  // namespace bellmark
