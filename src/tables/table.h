#pragma once

#include <chrono>
#include <cstdint>
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
    std::string problem;                         ///< why rows may be missing, for the operator; empty for a whole table
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

/// How much of a file is believed before it counts as damaged. A list of centers has some dozens of rows.
struct TableLimits {
    std::uintmax_t fileBytes = FileSystem::defaultLimit;
    std::size_t rows = 1000;
    std::chrono::milliseconds time{5000};
};

/// A table of a .mdb file, read by a process of its own: what a damaged file does to the library, this program goes on.
/// Of a damaged table the rows that could be read, and its problem. Throws TableError when there is none.
Table ReadMdbTable(const Path& file, const std::string& name, const TableLimits& limits = {});

/// The known calibration centers, of the program folder: BellmarkCenters.mdb, or else BellmarkCenters.csv. First column
/// the ID code, second the name. Throws TableError when neither is there or can be read.
Table ReadCenterTable(const FileSystem& files, const Path& programFolder);

}  // namespace bellmark
