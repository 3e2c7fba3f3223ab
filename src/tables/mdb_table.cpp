#include "tables/table.h"

#ifdef BELLMARK_MDB
#include <mdbtools.h>

#include <memory>
#endif

namespace bellmark {

#ifdef BELLMARK_MDB

bool CanReadMdb() {
    return true;
}

Table ReadMdbTable(const Path& file, const std::string& name) {
    const std::string fileName = file.string();
    const std::unique_ptr<MdbHandle, void (*)(MdbHandle*)> database(mdb_open(fileName.c_str(), MDB_NOFLAGS), mdb_close);
    if (!database) throw TableError(PathText(file) + " is no database that can be read.");
    std::string wanted = name;
    const std::unique_ptr<MdbTableDef, void (*)(MdbTableDef*)> definition(
        mdb_read_table_by_name(database.get(), wanted.data(), MDB_TABLE), mdb_free_tabledef);
    if (!definition) throw TableError(PathText(file) + " has no table " + name + '.');
    const GPtrArray* columns = mdb_read_columns(definition.get());
    if (!columns) throw TableError("The table " + name + " of " + PathText(file) + " cannot be read.");

    Table table;
    // The library writes each row's texts into these buffers.
    std::vector<std::vector<char>> texts(definition->num_cols, std::vector<char>(database->bind_size));
    for (unsigned i = 0; i < definition->num_cols; ++i) {
        const auto* column = static_cast<const MdbColumn*>(g_ptr_array_index(columns, i));
        table.columns.emplace_back(column->name);
        mdb_bind_column(definition.get(), static_cast<int>(i) + 1, texts[i].data(), nullptr);
    }
    mdb_rewind_table(definition.get());
    while (mdb_fetch_row(definition.get())) {
        std::vector<std::string>& row = table.rows.emplace_back();
        for (const auto& text : texts) row.emplace_back(text.data());
    }
    return table;
}

#else

bool CanReadMdb() {
    return false;
}

Table ReadMdbTable(const Path& file, const std::string&) {
    throw TableError(PathText(file) + " cannot be read: this program was built without the library for it.");
}

#endif

}  // namespace bellmark
