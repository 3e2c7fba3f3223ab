#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "platform/date_time.h"
#include "platform/files.h"

/// The certificate for other programs, as JSON after docs/calibration-certificate.schema.json.
namespace bellmark {

class Json;
struct CalibrationRun;
struct CenterConfig;

/// A file of the dated folder as it lies there.
struct FileDigest {
    std::string name;  ///< from the folder on, parts parted by "/"
    std::size_t bytes = 0;
    std::string sha256;  ///< hexadecimal
};

/// Of every file of the folder and of the folders in it, but for the one of that name in the folder itself. Each is
/// read once. Throws FileError.
std::vector<FileDigest> DigestsOfFolder(const FileSystem& files, const Path& folder, const std::string& exceptName);

/// Who calibrated what with what, the gains as they were found and as they are left, each trial, limits and verdicts.
/// What was not accepted is null: there is no result of it. Numbers keep all their digits. The statistics of the
/// relative trials are computed from their readings. Lengths are in microns or mils, as the run has them.
Json CertificateData(const CalibrationRun& run, const CenterConfig& center, const std::vector<FileDigest>& files,
                     DateTime now);

}  // namespace bellmark
