#include "pddx/pddx_file.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

#include "platform/files.h"
#include "platform/numbers.h"

namespace bellmark {
namespace {

std::string Written(const PDDXFile& document) {
    std::string text;
    document.PDDX_Output(text);
    return text;
}

TEST(PDDXFile, NewDocumentWritesItsFourValues) {
    EXPECT_EQ(Written(PDDXFile()),
              "[Pavement Deflection Data Exchange File]\r\n"
              "PDDXVersionNumber = 1.0\r\n"
              "DelimiterSymbol = ,\r\n"
              "DecimalSymbol = .\r\n"
              "\r\n"
              "[Device Configuration]\r\n"
              "NumberOfDeflectionSensors = 0\r\n"
              "\r\n");
}

// every_key.ddx holds each key with its data type as the value: order, spelling and types in one.
TEST(PDDXFile, EveryKeyInOrderWithItsDataType) {
    PDDXFile document;
    document.AddInterimGain(2);
    PDDXSection& location = document.AddTestLocation(0);
    location.AddDropData(0);
    location.AddDropData(0);
    location.AddHistoryData(1, 2);
    document.AddBellmarkHistory(0);
    for (PDDXSection& section : document.Sections()) {
        for (PDDXElement& element : section.Elements()) {
            element.SetValue(NumberText(static_cast<int>(element.DataType())));
        }
    }
    EXPECT_EQ(Written(document), ReadTextFile(DiskFileSystem(), BELLMARK_SOURCE_FOLDER "/tests/pddx/every_key.ddx"));
}

TEST(PDDXFile, ValuesGoOutAsTheyStandAndDescriptionsStay) {
    PDDXFile document;
    EXPECT_EQ(document.Sections("Pavement Deflection Data Exchange File").Elements("DecimalSymbol").Description(),
              "desc");
    EXPECT_EQ(document.Sections("FWD Calibration Center").Elements("Notes").Description(), "blah");
    PDDXSection& section = document.AddSection("Own");
    section.AddElement("Nothing", "no value", PDDXDataType::Text, "");
    section.AddElement("List", "a list", PDDXDataType::Text, "a, b = \"c\"");
    std::string text;
    section.PDDX_Output(text);
    EXPECT_EQ(text, "[Own]\r\nList = a, b = \"c\"\r\n\r\n");
}

TEST(PDDXFile, EverySettingOfAValueIsHeardByElementThenFile) {
    PDDXFile document;
    PDDXElement& element = document.AddTestLocation(0).Elements("TestLane");
    std::string heard;
    element.ValueChange.AddListener([&] { heard += element.Value() + " "; });
    document.ValueChange.AddListener([&](PDDXElement& changed) {
        heard += changed.Parent().Handle() + "/" + changed.Handle() + ". ";
        document.ValueChange.AddListener([](PDDXElement&) {});  // allowed at any time
    });
    element.SetValue("Outer");
    element.SetValue("Outer");
    EXPECT_EQ(heard, "Outer Test Location 1/TestLane. Outer Test Location 1/TestLane. ");
}

TEST(PDDXFile, HandlesAreFoundWithoutCaseAndHeldOnce) {
    PDDXFile document;
    PDDXSection& units = document.Sections("Units");
    EXPECT_EQ(&document.Sections("uNITS"), &units);
    EXPECT_EQ(&document.AddSection("UNITS"), &units) << "the first section stays";
    EXPECT_THROW(document.Sections("Nowhere"), PDDXError);
    const std::size_t count = units.Elements().Size();
    EXPECT_THROW(units.AddElement("loadunits", "", PDDXDataType::UnitName, "N"), PDDXError);
    EXPECT_EQ(units.Elements().Size(), count);
    PDDXElement& loadUnits = units.Elements("LoadUnits");
    EXPECT_THROW(loadUnits.SetHandle("GPSUnits"), PDDXError);
    loadUnits.SetHandle("A rather long handle of a load unit");
    EXPECT_EQ(&units.Elements("a rather long handle of a load unit"), &loadUnits);
    EXPECT_THROW(units.Elements("LoadUnits"), PDDXError);
    units.RemoveElement("A rather long handle of a load unit", "", PDDXDataType::UnitName, "");
    EXPECT_EQ(units.Elements().Size(), count - 1);
}

TEST(PDDXFile, CountsAreReadFromAnyText) {
    const std::map<std::string, int> cases = {{"", 0},    {" 12\t", 12},    {"-3", 0},           {"three", 0},
                                              {"2.5", 2}, {"40 drops", 40}, {"1e30", 2147483646}};
    for (const auto& [text, count] : cases) EXPECT_EQ(PDDXCount(text), count) << text;
}

TEST(PDDXFile, RepeatedKeysAndSectionsAreNumbered) {
    PDDXFile document;
    PDDXElement& locations = document.Sections("Deflection Data").Elements("NumberOfTestLocations");
    PDDXElement& calibrations = document.Sections("Device Calibration").Elements("NumberCalibrations");
    EXPECT_EQ(document.AddTestLocation(0).Handle(), "Test Location 1");
    EXPECT_EQ(locations.Value(), "1");
    PDDXSection& fifth = document.AddTestLocation(5);
    EXPECT_EQ(fifth.Handle(), "Test Location 5");
    EXPECT_EQ(locations.Value(), "1");
    EXPECT_THROW(document.AddTestLocation(5), PDDXError);
    EXPECT_EQ(fifth.AddDropData(3).Handle(), "DropData_3");
    EXPECT_EQ(fifth.Elements("NumberOfDrops").Value(), "0");
    EXPECT_EQ(fifth.AddDropData(0).Handle(), "DropData_1");
    EXPECT_EQ(fifth.Elements("NumberOfDrops").Value(), "1");
    EXPECT_EQ(document.AddBellmarkHistory(0).Handle(), "Device Calibration_1");
    EXPECT_EQ(calibrations.Value(), "") << "the caller counts calibrations";
    calibrations.SetValue("1");
    EXPECT_EQ(document.AddBellmarkHistory(0).Handle(), "Device Calibration_2");
    document.AddInterimGain(1);
    EXPECT_THROW(document.AddInterimGain(1), PDDXError);
    EXPECT_TRUE(document.AddInterimGain(2).Elements().Contains("LoadCellCalibrationCenterReferenceDate 2"));
}

}  // namespace
}  // namespace bellmark
