#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"

/// Tables as rows of texts, whatever they are stored in.
namespace bellmark {

struct Table {
    std::vector<std::string> columns;
    std::vector<std::vector<std::string>> rows;  ///< each as long as columns
};

/// A table that cannot be read: why, in words for the operator.
class TableError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// A table from its text: records of fields parted by commas, the first with the names of the columns; a field in
/// quotes may hold commas, line ends and doubled quotes (RFC 4180). Empty lines are skipped, missing fields are empty,
/// fields beyond the columns are left out. Throws TableError for a quote that is never closed.
Table ReadCsvTable(std::string_view text);

/// Whether this build reads .mdb files.
bool CanReadMdb();

/// A table of a .mdb file. Throws TableError when it cannot be read.
Table ReadMdbTable(const Path& file, const std::string& name);

/// The known calibration centers, of the program folder: BellmarkCenters.mdb, or else BellmarkCenters.csv. First column
/// the ID code, second the name. Throws TableError when neither is there or can be read.
Table ReadCenterTable(const FileSystem& files, const Path& programFolder);

}  // namespace bellmark
