#include "fwd/f25_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <sstream>

#include "fwd/fwd_document.h"
#include "pddx/pddx_file.h"
#include "platform/text.h"

namespace bellmark {
namespace {

using testing::DoubleNear;
using testing::ElementsAre;
using testing::HasSubstr;

/// Three sensors, two locations of two drops; a station of the day's calibration in the header, without drops.
const std::string sample =
    "5001,25.99,1,40, 3, 1,\"Maker   \"\r\n"
    "5002,\"25SI \",\"8002-057\",\"" +
    std::string(4, '\0') +
    "\"\r\n"
    "5003, \"        \", \"FWD   \", \"ROAD 7   \", \"F25\"\r\n"
    "5011,0,1,2026,11,03,09,19,0,\"Non\",000\r\n"
    "5200,\"LC-1    \",2,1.012, 3.888E-008, 0.00,  1.000\r\n"
    "5201,\"S-101   \",1.003,2.899E+001\r\n"
    "5202,\"S-102   \",0.998,2.945E+001\r\n"
    "5203,\"S-103   \",1.000,2.966E+001\r\n"
    "5204,\"NA      \",0,0.000,0.000\r\n"
    "5020,   150,     0,   300,  -200,N0    ,N0\r\n"
    "5301,0,1,3,3,   6.000,1,1,        ,2018,07,25,10,22\r\n"
    "5041, \"                \"\r\n"
    "5301,0,1,3,3,      0,1,1,        ,2026, 11, 03, 09, 31\r\n"
    "5302, 0, 1, 8, 0, 0, 0, 0, 0, \"first, near the bridge\"\r\n"
    "1,   993, 148.4,  88.5,  71.8\r\n"
    "2,   707, 114.5,  71.1,  57.4\r\n"
    "5301,0,1,3,3,     20,1,1,        ,2026, 11, 04, 09, 33\r\n"
    "1,   985, 177.1, 115.9,  88.3\r\n"
    "2,   814, 159.6,  78.8,  72.3";

TEST(F25File, IsReadIntoTheDocumentThatAConverterWouldLeave) {
    ASSERT_TRUE(IsF25(sample));
    for (const bool english : {true, false}) {
        PDDXFile file;
        FillDocument(ReadF25(sample), english, file);
        const FWDDocument document(file);
        EXPECT_EQ(document.Locations(), 2);
        EXPECT_EQ(document.Drops(), 2);
        EXPECT_EQ(document.DeflectionSensors(), 3);
        EXPECT_EQ(document.DeviceSerialNumber(), "8002-057");
        EXPECT_EQ(document.LoadCellSerialNumber(), "LC-1");
        EXPECT_EQ(document.LoadCellGain(), 1.012);
        EXPECT_EQ(document.SensorSerialNumber(2), "S-102");
        EXPECT_EQ(document.SensorGain(1), 1.003);
        EXPECT_EQ(document.SensorGain(2), 0.998);
        EXPECT_EQ(document.EndDate(), "04-Nov-2026");
        EXPECT_EQ(document.Units().plateRadius, 150);
        // 993 kPa x pi x (0.15 m)^2 = 70.1910 kN; / 0.0044482 kN = 15779.65 lbf. 148.4 / 25.4 = 5.84252 mil
        EXPECT_THAT(document.DropFields(1, 1), english ? ElementsAre("15779.6", "5.8425", "3.4843", "2.8268")
                                                       : ElementsAre("70.191", "148.4", "88.5", "71.8"));
        EXPECT_EQ(document.Units().load, english ? "pound-force" : "kilo-Newton");
        EXPECT_EQ(document.Units().deflection, english ? "mil" : "micron");
        EXPECT_EQ(file.Sections("Test Location 2").Elements("TestLocation").Value(), "20,0,0");
        EXPECT_EQ(file.Sections("Test Location 1").Elements("TestComment").Value(), "first, near the bridge");
    }
    EXPECT_THAT(ReadF25(sample).distances, ElementsAre(0, 300, -200));
}

std::string Replaced(const std::string& from, const std::string& to) {
    std::string text = sample;
    text.replace(text.find(from), from.size(), to);
    return text;
}

TEST(F25File, IsRefusedWithTheLineAndNothingIsGuessed) {
    const struct {
        std::string text;
        const char* problem;
    } rows[] = {
        {Replaced("5001,25.99", "5001,26.10"), "Line 1: edition \"26.10\" is not known, only 25."},
        {Replaced("25SI ", "25US "), "Line 2: units \"25US\" are not known"},
        {Replaced("1.003", "1.0O3"), "Line 6: \"1.0O3\" is not a number."},
        {Replaced("S-102", "S,102"), "Line 7: serial number \"S,102\" holds a comma."},
        {Replaced(",   150,", ",     0,"), "Line 10: a plate radius of 0 mm is not possible."},
        {Replaced("  -200,N0", "N0,N0"), "Line 15: the header lists 3 sensors and 2 distances."},
        {Replaced("2,   707", "3,   707"), "Line 16: drop 3 stands in place of drop 2."},
        {Replaced(", 114.5", ", "), "Line 16: \"\" is not a number."},
        {Replaced(", 114.5", ""), "Line 16: there are 3 values in place of 4."},
        {Replaced(" 114.5", std::string(6, '\0')), "Line 16: there is a NUL byte."},
        {Replaced("near the bridge\"", "near the bridge"), "Line 14: a quotation mark is missing."},
        {Replaced("5301,0,1,3,3,     20", "a note"), "Line 17: this is neither a record nor a drop."},
        {Replaced("57.4\r\n", "57.4\n"), "Line 16: the line ends in another way than those before"},
        {sample.substr(0, sample.size() - 1), "Line 19: the file is cut."},
        {sample.substr(0, sample.size() - 8), "Line 19: there are 3 values in place of 4."},
        {sample.substr(0, sample.find("1,   993")), "Line 14: the file ends without a drop."},
        {Replaced("5020,", "5029,"), "Line 15: drops stand before the header's end."},
        {"5001,25.99\r\n" + std::string(17 << 20, ' '), "the file is larger than 16 MB."},
    };
    for (const auto& row : rows) {
        try {
            ReadF25(row.text);
            ADD_FAILURE() << "accepted, but: " << row.problem;
        } catch (const F25Error& error) {
            EXPECT_THAT(error.what(), HasSubstr(row.problem));
        }
    }
}

TEST(F25File, OfADeviceAgreesWithItsOwnExchangeFile) {
    std::ifstream file(BELLMARK_SOURCE_FOLDER "/../shared/data/survey.F25", std::ios::binary);
    std::ifstream exchange(BELLMARK_SOURCE_FOLDER "/../shared/data/survey.pdx", std::ios::binary);
    if (!file || !exchange) GTEST_SKIP() << "the survey is not here";
    const F25Survey survey = ReadF25(std::string(std::istreambuf_iterator<char>(file), {}));
    ASSERT_EQ(survey.locations.size(), 52u);
    ASSERT_EQ(survey.sensors.size(), 11u);
    EXPECT_EQ(survey.sensors[2].serialNumber, "FG-159");
    std::size_t at = 0;
    for (std::string line; std::getline(exchange, line);) {
        if (!line.starts_with("DropData_")) continue;
        const F25Drop& drop = survey.locations.at(at / 3).drops.at(at % 3);
        ++at;
        // It holds one digit more than the F25 file, which writes 1000 microns and more without decimals.
        std::istringstream values(line.substr(line.find('=') + 1));
        double value = 0;
        values >> value;
        EXPECT_NEAR(drop.pressure, value, 0.5001);
        for (const double deflection : drop.deflections) {
            values.ignore(1, ',');
            values >> value;
            EXPECT_THAT(deflection, DoubleNear(value, value < 1000 ? 0.1001 : 0.5001));
        }
    }
    EXPECT_EQ(at, 156u);
}

}  // namespace
}  // namespace bellmark
