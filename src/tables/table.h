#pragma once

#include <chrono>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"

/// Tables as rows of texts, whatever their storage.
namespace bellmark {

struct Table {
    std::vector<std::string> columns;
    std::vector<std::vector<std::string>> rows;  ///< each as long as columns
    std::string problem;                         ///< why rows may be missing, for the operator; empty when complete
};

/// A table that cannot be read; the text tells the operator why.
class TableError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Reads a table from text: records of fields separated by commas, the first with the names of the columns. A field in
/// quotes may hold commas, line ends and doubled quotes (RFC 4180). Empty lines are skipped, missing fields are empty,
/// fields beyond the columns are left out. Throws TableError for a quote that is never closed.
Table ReadCsvTable(std::string_view text);

/// Whether this build reads .mdb files.
bool CanReadMdb();

/// Limits beyond which a file counts as damaged. A list of centers has some dozens of rows.
struct TableLimits {
    std::uintmax_t fileBytes = FileSystem::defaultLimit;
    std::size_t rows = 1000;
    std::chrono::milliseconds time{5000};
};

/// Reads a table of a .mdb file in a separate process, so that a damaged file cannot crash the program. Of a damaged
/// table, returns the rows that could be read, and its problem. Throws TableError when there are none.
Table ReadMdbTable(const Path& file, const std::string& name, const TableLimits& limits = {});

/// The known calibration centers, from the program folder: BellmarkCenters.mdb, or else BellmarkCenters.csv. The first
/// column is the ID code, the second the name. Throws TableError when neither can be read.
Table ReadCenterTable(const FileSystem& files, const Path& programFolder);

}  // namespace bellmark
