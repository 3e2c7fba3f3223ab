#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/date_time.h"
#include "platform/files.h"

/// The certificate for other programs, as JSON after docs/calibration-certificate.schema.json.
namespace bellmark {

class Json;
struct CalibrationRun;
struct CenterConfig;

/// A file of the dated folder.
struct FileDigest {
    std::string name;  ///< relative to the folder, with "/" between its parts
    std::size_t bytes = 0;
    std::string sha256;  ///< hexadecimal
};

FileDigest DigestOf(std::string name, std::string_view bytes);

/// Digests by the names of their files.
using KnownDigests = std::map<std::string, FileDigest>;

/// The digests of all files in the folder and its subfolders, except the file of that name in the folder itself. Each
/// file is read once, unless its digest is known. Throws FileError.
std::vector<FileDigest> DigestsOfFolder(const FileSystem& files, const Path& folder, const std::string& exceptName,
                                        const KnownDigests& known = {});

/// The operators, the device and the references, the gains as found and as left, each trial, limits and verdicts. A
/// calibration that was not accepted is null. Numbers keep all their digits. The statistics of the relative trials are
/// computed from their readings. Lengths are in the run's unit, microns or mils.
Json CertificateData(const CalibrationRun& run, const CenterConfig& center, const std::vector<FileDigest>& files,
                     DateTime now);

}  // namespace bellmark
