#include "tables/table.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

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
    // Columns, texts and row count as exported by another program.
    const Table table = ReadMdbTable(file, "DateTest");
    EXPECT_THAT(table.columns,
                ElementsAre("IDCol", "DateTimeCol", "DateCol", "TimeCol", "LongTextCol", "ShortTextCol"));
    ASSERT_EQ(table.rows.size(), 6U);
    EXPECT_EQ(table.rows[0][0], "1");
    EXPECT_EQ(table.rows[0][5], "Hello");
    EXPECT_EQ(table.rows[1][5], "Year 1999");
    EXPECT_THROW(ReadMdbTable(file, "BellmarkCenters"), TableError);
}

/// Bytes of the database changed at random, but always in the same way: the library must answer in time. Some of these
/// files kept it busy for minutes, others made it crash.
TEST(MdbTable, ADamagedDatabaseCostsAFewSecondsAtMost) {
    const Path whole = Path(BELLMARK_SOURCE_FOLDER) / "../shared/data/DateTestDatabase.mdb";
    if (!CanReadMdb() || !std::filesystem::exists(whole)) GTEST_SKIP() << "no library or no database";
    const std::string bytes = DiskFileSystem().ReadBytes(whole);
    const TemporaryFolder folder;
    const Path file = folder / "damaged.mdb";
    TableLimits limits;
    limits.time = std::chrono::milliseconds(300);
    std::mt19937 random(3);
    int told = 0;
    for (int i = 0; i < 60; ++i) {
        std::string damaged = bytes;
        for (int change = 0; change < 400; ++change) damaged[random() % damaged.size()] = static_cast<char>(random());
        DiskFileSystem().ReplaceFile(file, damaged);
        const auto begun = std::chrono::steady_clock::now();
        try {
            const Table table = ReadMdbTable(file, "DateTest", limits);
            told += table.problem.empty() ? 0 : 1;
            for (const auto& row : table.rows) EXPECT_EQ(row.size(), table.columns.size());
        } catch (const TableError&) {
            ++told;
        }
        EXPECT_LT(std::chrono::steady_clock::now() - begun, limits.time + std::chrono::seconds(1)) << i;
    }
    EXPECT_GT(told, 0);
}

TEST(MdbTable, TooManyRowsAreCutAndTold) {
    const Path file = Path(BELLMARK_SOURCE_FOLDER) / "../shared/data/DateTestDatabase.mdb";
    if (!CanReadMdb() || !std::filesystem::exists(file)) GTEST_SKIP() << "no library or no database";
    TableLimits limits;
    limits.rows = 4;
    const Table cut = ReadMdbTable(file, "DateTest", limits);
    EXPECT_EQ(cut.rows.size(), 4U);
    EXPECT_EQ(cut.rows[1][5], "Year 1999");
    EXPECT_NE(cut.problem.find(" 4 entries"), std::string::npos) << cut.problem;
    limits.rows = 6;
    EXPECT_EQ(ReadMdbTable(file, "DateTest", limits).problem, "");
    limits.fileBytes = 1000;
    EXPECT_THROW(ReadMdbTable(file, "DateTest", limits), TableError);
}

}  // namespace
}  // namespace bellmark
