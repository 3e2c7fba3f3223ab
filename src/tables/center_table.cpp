#include "platform/text.h"
#include "tables/table.h"

namespace bellmark {

namespace {

constexpr const char* databaseName = "BellmarkCenters.mdb";
constexpr const char* textName = "BellmarkCenters.csv";
constexpr const char* tableName = "BellmarkCenters";

/// The file of that name in any case, or an empty path.
Path FileNamed(const FileSystem& files, const Path& folder, const char* name) {
    const auto names = FilesMatching(files, folder, name);
    return names.empty() ? Path() : folder / PathFromText(names.front());
}

}  // namespace

Table ReadCenterTable(const FileSystem& files, const Path& programFolder) {
    const Path database = FileNamed(files, programFolder, databaseName);
    const Path text = FileNamed(files, programFolder, textName);
    const bool useText = database.empty() || (!CanReadMdb() && !text.empty());
    if (useText && text.empty()) {
        throw TableError(std::string("There is no ") + databaseName + " and no " + textName +
                         " in the program folder.");
    }
    Table table;
    try {
        table = useText ? ReadCsvTable(ReadTextFile(files, text)) : ReadMdbTable(database, tableName);
    } catch (const FileError& error) {
        throw TableError(error.what());
    }
    if (table.columns.size() < 2) throw TableError("The table of calibration centers has no names in it.");
    return table;
}

}  // namespace bellmark
