#include "pddx/mod_pddx_read.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <vector>

#include "platform/numbers.h"
#include "platform/text.h"
#include "tests/pddx/memory_file_system.h"

namespace bellmark {
namespace {

PDDXReadResult Read(std::string_view text, PDDXFile& document, bool keepExisting) {
    MemoryFileSystem files;
    files.contents["file.ddx"] = ToWindows1252(text);
    return ReadPDDXFile(files, "file.ddx", document, keepExisting);
}

std::string Value(const PDDXFile& document, std::string_view section, std::string_view handle) {
    return document.Sections(section).Elements(handle).Value();
}

using Values = std::map<std::pair<std::string, std::string>, std::string>;

void ExpectValues(const PDDXFile& document, const Values& expected) {
    for (const auto& [key, value] : expected) {
        EXPECT_EQ(Value(document, key.first, key.second), value) << key.first << " " << key.second;
    }
}

bool HasDrop(const PDDXFile& document, std::string_view section, std::string_view handle) {
    return document.Sections(section).Elements().Contains(handle);
}

// As other makers' programs may write it: other case, no blanks around the equal sign, quotes, sections in any order.
const std::string twoLocations =
    "[test location 2]\nNUMBEROFDROPS=3\nDropData_1=4\nDropData_2 = \"5 \"\nDropData_3 = 6\n"
    "[DEFLECTION DATA]\nNumberOfTestLocations = 2\n"
    "[Test Location 1]\nTestLane = ' outer'\nNumberOfDrops = 3\nDropData_1 = 1\nDropData_2 = 2\nDropData_3 = 3\n"
    "[Device Calibration]\nNumberCalibrations = 2\n"
    "[Device Calibration_1]\nCalCenterIDCode = 11\n[Device Calibration_2]\nCalCenterIDCode = 22\n"
    "[Device Configuration]\nNumberOfDeflectionSensors = 9\nNotInTheTemplate = 1\n";

TEST(ReadPDDXFile, ReplacesTheDocument) {
    PDDXFile document;
    document.Sections("Units").Elements("LoadUnits").SetValue("kip");
    const PDDXReadResult result = Read(twoLocations, document, false);
    EXPECT_TRUE(result.readable);
    EXPECT_EQ(result.numberOfSensors, 9);
    ExpectValues(document, {{{"Units", "LoadUnits"}, ""},
                            {{"Pavement Deflection Data Exchange File", "DecimalSymbol"}, ""},
                            {{"Deflection Data", "NumberOfTestLocations"}, "2"},
                            {{"Test Location 1", "TestLane"}, " outer"},
                            {{"Test Location 2", "TestLane"}, ""},
                            {{"Test Location 1", "DropData_3"}, "3"},
                            {{"Test Location 2", "DropData_2"}, "5 "},
                            {{"Test Location 2", "NumberOfDrops"}, "3"},
                            {{"Device Calibration", "NumberCalibrations"}, "2"},
                            {{"Device Calibration_2", "CalCenterIDCode"}, "22"}});
    EXPECT_FALSE(HasDrop(document, "Test Location 2", "DropData_4"));
    EXPECT_FALSE(document.Sections("Device Configuration").Elements().Contains("NotInTheTemplate"));
}

TEST(ReadPDDXFile, AppendsToADocumentThatIsKept) {
    PDDXFile document;
    document.Sections("Units").Elements("LoadUnits").SetValue("kip");
    Read(twoLocations, document, true);
    Read(twoLocations, document, true);
    ExpectValues(document, {{{"Units", "LoadUnits"}, "kip"},
                            {{"Pavement Deflection Data Exchange File", "DecimalSymbol"}, "."},
                            {{"Deflection Data", "NumberOfTestLocations"}, "4"},
                            {{"Test Location 1", "NumberOfDrops"}, "3"},
                            {{"Test Location 3", "TestLane"}, " outer"},
                            {{"Test Location 4", "DropData_3"}, "6"},
                            {{"Test Location 4", "NumberOfDrops"}, "3"},
                            {{"Device Calibration", "NumberCalibrations"}, "4"},
                            {{"Device Calibration_1", "CalCenterIDCode"}, "11"},
                            {{"Device Calibration_4", "CalCenterIDCode"}, "22"}});
}

TEST(ReadPDDXFile, ReadingAgainTakesTheNewFile) {
    PDDXFile document;
    Read(twoLocations, document, false);
    Read(
        "[Deflection Data]\nNumberOfTestLocations = 1\n[Test Location 1]\nNumberOfDrops = 4\nDropData_1 = 7\n"
        "DropData_4 = 8\n",
        document, false);
    ExpectValues(document, {{{"Test Location 1", "DropData_1"}, "7"},
                            {{"Test Location 1", "DropData_2"}, ""},
                            {{"Test Location 1", "DropData_4"}, "8"},
                            {{"Test Location 2", "DropData_1"}, ""}});
}

TEST(ReadPDDXFile, ATakenNumberEndsTheLocationsAndNotTheReading) {
    PDDXFile document;
    document.AddTestLocation(1);  // not counted
    Read(twoLocations, document, true);
    EXPECT_EQ(Value(document, "Device Calibration_2", "CalCenterIDCode"), "22");
}

TEST(ReadPDDXFile, AnUnreadableFileReadsAsAnEmptyOne) {
    for (const bool keepExisting : {false, true}) {
        PDDXFile document;
        const PDDXReadResult result = ReadPDDXFile(MemoryFileSystem(), "missing.ddx", document, keepExisting);
        EXPECT_FALSE(result.readable);
        EXPECT_FALSE(result.numberOfSensors);
        EXPECT_EQ(Value(document, "Device Configuration", "NumberOfDeflectionSensors"), keepExisting ? "0" : "");
    }
}

TEST(ReadPDDXFile, SensorCountOnlyAboveZero) {
    const std::vector<std::pair<std::string, std::optional<int>>> cases = {
        {"7", 7}, {"0", {}}, {"", {}}, {"-7", {}}, {"seven", {}}, {"0.4", {}}, {"32767", 32767}, {"32768", {}}};
    for (const auto& [value, number] : cases) {
        PDDXFile document;
        const auto result = Read("[Device Configuration]\nNumberOfDeflectionSensors = " + value, document, false);
        EXPECT_EQ(result.numberOfSensors, number) << value;
    }
}

TEST(ReadPDDXFile, EntriesThatTheFileAnnouncesAndLacksAreEmpty) {
    PDDXFile document;
    Read("[Deflection Data]\nNumberOfTestLocations = 2\n[Test Location 1]\nNumberOfDrops = 2\nDropData_2 = 1,2\n",
         document, false);
    ExpectValues(document, {{{"Test Location 1", "DropData_1"}, ""},
                            {{"Test Location 1", "DropData_2"}, "1,2"},
                            {{"Test Location 2", "NumberOfDrops"}, ""}});
    EXPECT_FALSE(HasDrop(document, "Test Location 2", "DropData_1"));
}

TEST(ReadPDDXFile, DamagedCountsCostNothing) {
    for (const std::string count : {"2000000000", "99999999999999999999", "1e300", "-1", "many", "0x7fffffff"}) {
        for (const bool keepExisting : {false, true}) {
            std::string text = "[Deflection Data]\nNumberOfTestLocations = " + count +
                               "\n[Device Calibration]\nNumberCalibrations = " + count +
                               "\n[Device Calibration_1]\nCalCenterIDCode = 7\n";
            for (int i = 1; i <= 50; ++i) {
                text += "[Test Location " + NumberText(i) + "]\nNumberOfDrops = " + count + "\nDropData_1 = 1\n";
            }
            PDDXFile document;
            Read(text, document, keepExisting);
            std::size_t elements = 0;
            for (const PDDXSection& section : document.Sections()) elements += section.Elements().Size();
            // 101 announced entries are in the file; as many again and 1000 more are accepted, of ten elements each.
            EXPECT_LE(elements, 107U + 10U * (101 + 101 + 1000)) << count;
            if (PDDXCount(count) > 0) {
                ExpectValues(document, {{{"Test Location 50", "DropData_1"}, "1"},
                                        {{"Device Calibration_1", "CalCenterIDCode"}, "7"}});
            }
        }
    }
}

/// Values that a line of the file can hold: no blank at the ends, not quoted as a whole.
std::string RandomValue(std::mt19937& random) {
    const std::vector<std::string> parts = {"a", "Z", "7", ",", " ", "=", ";", "[", "]", "\"", "'", "\u00b0", "\u20ac"};
    const std::size_t length = random() % 10 == 0 ? 254 + random() % 60 : random() % 20;
    std::string value;
    for (std::size_t i = 0; i < length; ++i) value += i == 0 || i + 1 == length ? "v" : parts[random() % parts.size()];
    return value;
}

TEST(ReadPDDXFile, WhatWasWrittenComesBackUpTo254Characters) {
    std::mt19937 random(20120309);
    for (int round = 0; round < 50; ++round) {
        PDDXFile document;
        for (auto location = random() % 4; location > 0; --location) {
            PDDXSection& section = document.AddTestLocation(0);
            for (auto drop = random() % 45; drop > 0; --drop) section.AddDropData(0);
        }
        PDDXElement& calibrations = document.Sections("Device Calibration").Elements("NumberCalibrations");
        for (auto entry = random() % 4; entry > 0; --entry) {
            document.AddBellmarkHistory(0);
            calibrations.SetValue(NumberText(PDDXCount(calibrations.Value()) + 1));
        }
        for (PDDXSection& section : document.Sections()) {
            for (PDDXElement& element : section.Elements()) {
                if (!StartsWith(element.Handle(), "Number")) element.SetValue(RandomValue(random));
            }
        }
        std::string text;
        document.PDDX_Output(text);
        PDDXFile copy;
        Read(text, copy, false);
        ASSERT_EQ(copy.Sections().Size(), document.Sections().Size());
        for (const PDDXSection& section : document.Sections()) {
            ASSERT_EQ(copy.Sections(section.Handle()).Elements().Size(), section.Elements().Size());
            for (const PDDXElement& element : section.Elements()) {
                ASSERT_EQ(Value(copy, section.Handle(), element.Handle()), FirstCharacters(element.Value(), 254));
            }
        }
    }
}

// Another maker's program numbers its locations and drops from 0 and has no count of locations.
TEST(ReadPDDXFile, ReadsASurveyOfAnotherMaker) {
    const Path path = BELLMARK_SOURCE_FOLDER "/../shared/data/survey.pdx";
    const DiskFileSystem files;
    if (!files.IsFile(path)) GTEST_SKIP() << "no sample data";
    PDDXFile document;
    const PDDXReadResult result = ReadPDDXFile(files, path, document, false);
    EXPECT_TRUE(result.readable);
    EXPECT_EQ(result.numberOfSensors, 11);
    EXPECT_EQ(document.Sections().Size(), PDDXFile().Sections().Size()) << "no location is announced";
    ExpectValues(document, {{{"Units", "DeflectionUnits"}, "micron"},
                            {{"Units", "SensorsLocationUnits"}, ""},              // SensorLocationUnits there
                            {{"Device Information", "SensorSerialNumbers"}, ""},  // singular in that file
                            {{"Device Configuration", "LoadPlateRadius"}, "0.30000001192092896"},
                            {{"Operations Information", "EndDate"}, "12-Apr-2023"}});
}

TEST(PDDXRead, NulBytesAreDroppedFromNamesAlone) {
    using namespace std::string_literals;
    PDDXFile document;
    Read(
        "[Device Information]\nSensorSerialNumbers = S-1\0\0, S-2\0\n"
        "[Device Calibration]\nSensorCalibrationCenterGain = 1.0\0"
        "5\n"s,
        document, false);
    EXPECT_EQ(Value(document, "Device Information", "SensorSerialNumbers"), "S-1, S-2");
    EXPECT_EQ(Value(document, "Device Calibration", "SensorCalibrationCenterGain"),
              "1.0\0"
              "5"s)
        << "a damaged number must not become another one";
}

}  // namespace
}  // namespace bellmark
