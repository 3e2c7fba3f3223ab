#include "tables/table.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/temporary_folder.h"

namespace bellmark {
namespace {

using ::testing::ElementsAre;
using Row = std::vector<std::string>;

TEST(CsvTable, FollowsTheQuotesOfRfc4180) {
    const Table table = ReadCsvTable(
        "ID,Name,Place\r\n1,plain, trimmed \r\n2,\"a, b\",\"two\r\nlines\"\n\n3,\"say \"\"so\"\"\"\r\n4,\"\",x,beyond");
    EXPECT_THAT(table.columns, ElementsAre("ID", "Name", "Place"));
    EXPECT_THAT(table.rows, ElementsAre(Row{"1", "plain", "trimmed"}, Row{"2", "a, b", "two\r\nlines"},
                                        Row{"3", "say \"so\"", ""}, Row{"4", "", "x"}));
    EXPECT_TRUE(ReadCsvTable("").columns.empty());
    EXPECT_THROW(ReadCsvTable("ID,Name\n1,\"open"), TableError);
}

TEST(CenterTable, SampleIsWholeAndBadOnesAreTold) {
    const DiskFileSystem files;
    const Table table = ReadCenterTable(files, Path(BELLMARK_SOURCE_FOLDER) / "sample");
    EXPECT_THAT(table.rows[1], ElementsAre("2", "Coastal Pavement Center, Harbor Branch"));
    EXPECT_THAT(table.rows.back(), ElementsAre("12", "Straßenprüfzentrum Süd"));

    const TemporaryFolder folder;
    EXPECT_THROW(ReadCenterTable(files, folder.Folder()), TableError) << "there is none";
    DiskFileSystem().ReplaceFile(folder / "bellmarkcenters.CSV", "only names\r\nNorth\r\n");
    EXPECT_THROW(ReadCenterTable(files, folder.Folder()), TableError) << "there is no second column";
    DiskFileSystem().ReplaceFile(folder / "BellmarkCenters.mdb", "no database at all");
    EXPECT_THROW(ReadCenterTable(files, folder.Folder()), TableError);
}

TEST(MdbTable, ReadsADatabaseOfOthers) {
    const Path file = Path(BELLMARK_SOURCE_FOLDER) / "../shared/data/DateTestDatabase.mdb";
    if (!CanReadMdb() || !std::filesystem::exists(file)) GTEST_SKIP() << "no library or no database";
    // Columns, texts and their number as another program exports them.
    const Table table = ReadMdbTable(file, "DateTest");
    EXPECT_THAT(table.columns,
                ElementsAre("IDCol", "DateTimeCol", "DateCol", "TimeCol", "LongTextCol", "ShortTextCol"));
    ASSERT_EQ(table.rows.size(), 6U);
    EXPECT_EQ(table.rows[0][0], "1");
    EXPECT_EQ(table.rows[0][5], "Hello");
    EXPECT_EQ(table.rows[1][5], "Year 1999");
    EXPECT_THROW(ReadMdbTable(file, "BellmarkCenters"), TableError);
}

}  // namespace
}  // namespace bellmark
