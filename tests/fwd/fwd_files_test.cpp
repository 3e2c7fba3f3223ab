#include "fwd/fwd_files.h"

#include <gtest/gtest.h>

namespace bellmark {
namespace {

struct TypeCase {
    Make make;
    const char* extension;
    int number;
};

TEST(FWDFiles, TypeForTheConverterByMakeAndExtension) {
    const TypeCase cases[] = {
        {Make::Dynatest, "F25", 1}, {Make::Dynatest, "f20", 2}, {Make::Dynatest, "FWD", 2}, {Make::Dynatest, "xyz", 1},
        {Make::CarlBro, "FWD", 3},  {Make::CarlBro, "TXT", 4},  {Make::CarlBro, "tst", 4},  {Make::CarlBro, "", 3},
        {Make::Jils, "DAT", 6},     {Make::Jils, "Par", 7},     {Make::Jils, "CFG", 10},    {Make::Jils, "F25", 6},
        {Make::Kuab, "FWD", 8},     {Make::Kuab, "INI", 9},     {Make::Kuab, "TXT", 8},     {Make::Dynatest, "ddx", 0},
        {Make::CarlBro, "DDX", 0},  {Make::Jils, "Ddx", 0},     {Make::Kuab, "DDX", 0}};
    for (const auto& c : cases) {
        EXPECT_EQ(FWDFileType(c.make, c.extension), c.number) << static_cast<int>(c.make) << ' ' << c.extension;
    }
}

TEST(FWDFiles, TheThreeFilesOfAJilsComeOneAfterTheOther) {
    // gains of the load cell, then of the sensors, then their numbers
    EXPECT_EQ(std::string(ConfigurationFilter(Make::Jils)).rfind("CFG files|*.cfg", 0), 0u);
    EXPECT_EQ(std::string(NextJilsFilter("CFG")).rfind("SetUp.Par Files|*.Par", 0), 0u);
    EXPECT_EQ(std::string(NextJilsFilter("Par")).rfind("DAT files|*.dat", 0), 0u);
}

TEST(FWDFiles, DropDataAreOfferedByMake) {
    // the last pair is reversed on purpose
    EXPECT_STREQ(DropDataFilter(Make::Dynatest), "F20 or F25 Files|*.F**|PDDX Files|*.ddx|*.*|All Files");
    EXPECT_STREQ(DropDataFilter(Make::CarlBro), "FWD File|*.FWD|PDDX Files|*.ddx|*.*|All Files");
    EXPECT_STREQ(DropDataFilter(Make::Jils), "DAT Files|*.DAT|PDDX Files|*.ddx|*.*|All Files");
    EXPECT_STREQ(DropDataFilter(Make::Kuab), "FWD File|*.FWD|PDDX Files|*.ddx|*.*|All Files");
}

}  // namespace
}  // namespace bellmark
