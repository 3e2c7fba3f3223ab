#include "analysis/limits.h"
#include "app/daily_calibration.h"
#include "app/save_pddx.h"
#include "platform/printed_pages.h"
#include "platform/text.h"
#include "run/accel_adjustment.h"
#include "run/field_format.h"

#include <gtest/gtest.h>

#include "app/program.h"
#include "pddx/pddx_file.h"
#include "platform/format.h"
#include "tests/support/fake_acquisition.h"
#include "tests/support/test_machine.h"

namespace bellmark {
namespace {

TEST(Shared, ListsGiveTheirFields) {
    const struct {
        int index;
        const char* list;
        const char* field;
    } cases[] = {
        {1, "1.5, 2.5, 3.5", "1.5"},
        {2, "1.5, 2.5, 3.5", " 2.5"},
        {3, "1.5,2.5,   3.5  ", " 3.5"},
        {4, "1.5,2.5", ""},
        {2, "a,,b", ""},
        {3, "a,,b", "b"},
        {1, "", ""},
        {0, "a,b", ""},
        {-1, "a,b", ""},
        {1, "  two   words , b", "two words "},
    };
    for (const auto& test : cases) EXPECT_EQ(GetListField(test.index, test.list), test.field) << test.list;
}

TEST(Shared, SmallRoutines) {
    EXPECT_EQ(CompressBlanks("   a  b \t  c    "), "a b \t c");
    EXPECT_EQ(CompressBlanks("    "), "");
    EXPECT_EQ(FileExtension("a.b.ddx"), "ddx");
    EXPECT_EQ(FileExtension("noextension"), "noextension");
    EXPECT_EQ(FileExtension("ends."), "");
    EXPECT_EQ(ZeroIfEmpty(""), "0");
    EXPECT_EQ(ZeroIfEmpty("0.0"), "0.0");
    EXPECT_EQ(ColumnLetter(1) + ColumnLetter(23) + ColumnLetter(0) + ColumnLetter(24), "AW");
    EXPECT_EQ(CelsiusToFahrenheit(-40), -40);
    EXPECT_EQ(CelsiusToFahrenheit(37.5), 99.5);
    EXPECT_EQ(FahrenheitToCelsius(99.5), 37.5);
    EXPECT_EQ(FahrenheitToCelsius(32), 0);
}

TEST(Shared, ValuesHaveOnePictureByKind) {
    const struct {
        Field kind;
        const char* english;
        const char* metric;
    } cases[] = {
        {Field::Load, "1,234.6", "1234.568"},          {Field::Deflection, "1234.57", "1,235"},
        {Field::TwoPlaces, "1234.57", "1234.57"},      {Field::ThreePlaces, "1234.568", "1234.568"},
        {Field::FourPlaces, "1234.5678", "1234.5678"}, {Field::Other, "1,234.568", "1234.5678"},
    };
    for (const auto& test : cases) {
        EXPECT_EQ(Format(1234.5678, FieldFormat(test.kind, true)), test.english);
        EXPECT_EQ(Format(1234.5678, FieldFormat(test.kind, false)), test.metric);
    }
    const DateTime moment = MakeDateTime(2012, 3, 9, 14, 5, 9);
    EXPECT_EQ(Format(moment, FieldFormat(Field::Date, true)), "09-Mar-2012");
    EXPECT_EQ(Format(moment, FieldFormat(Field::Time, false)), "14:05:09");
}

TEST(Shared, LimitsAreDecimal) {
    EXPECT_FALSE(ExceedsLimit(1 - 0.997, 0.003));
    EXPECT_FALSE(ExceedsLimit(0.1 + 0.2, 0.3));
    EXPECT_TRUE(ExceedsLimit(0.003001, 0.003));
    EXPECT_TRUE(ExceedsLimit(23500.001, 23500.0));
    EXPECT_FALSE(ExceedsLimit(-1, 0));
}

TEST(Shared, BreaksPrintedLinesAndPages) {
    const std::vector<std::string> top(8);
    const auto page = [&](std::vector<std::string> lines) {
        lines.insert(lines.begin(), top.begin(), top.end());
        return lines;
    };
    using Pages = std::vector<std::vector<std::string>>;
    const std::string wide(87, 'x');
    const std::string continuation(81, 'x');
    EXPECT_EQ(PrinterPages("one\r\n\r\nthree"), Pages({page({"one", "", "three"})}));
    EXPECT_EQ(PrinterPages("a\fb\r\n\f"), Pages({page({"a"}), page({"b"})}));
    EXPECT_EQ(PrinterPages(""), Pages({page({})}));
    EXPECT_EQ(PrinterPages(wide), Pages({page({wide})}));
    EXPECT_EQ(PrinterPages(wide + "yz"), Pages({page({wide, "      yz"})})) << "no blank to break at";
    EXPECT_EQ(PrinterPages(wide + " end?"), Pages({page({wide, "       end?"})}));
    EXPECT_EQ(PrinterPages("word " + wide),
              Pages({page({"word", "      " + continuation, "      " + std::string(6, 'x')})}));
    const std::string micro = std::string(85, 'x') + " \xC2\xB5m";
    EXPECT_EQ(PrinterPages(micro), Pages({page({std::string(85, 'x'), "      \xC2\xB5m"})}))
        << "88 characters, 89 bytes";
}

struct DailyCalibrationTest : ::testing::Test {
    TestMachine machine;
    Program program{machine.machine};
    std::shared_ptr<FakeAcquisition> board = std::make_shared<FakeAcquisition>();
    DailyCalibrationTest() {
        program.Register<AcquisitionDoor>([this](Program&) { return board; });
        program.Center.AccelDailyCalibrationDate = MakeDateTime(2012, 3, 9);
        program.Center.AccelDailyCalibrationTime = ZeroDate() + std::chrono::hours(8) + std::chrono::seconds(30);
        program.Center.AccelDailyCalibrationTemperatureUnit = "Celsius";
        program.Center.AccelDailyCalibrationTemp = 20;
        board->volts = 0.2F;
    }
    void SetClock(int day, int hour, int minute, int second) {
        machine.clock.Set(MakeDateTime(2012, 3, day, hour, minute, second));
    }
};

TEST_F(DailyCalibrationTest, HoldsForEightHours) {
    SetClock(9, 16, 0, 59);
    EXPECT_EQ(MinutesSinceAccelCal(program), 480) << "seconds do not count";
    EXPECT_TRUE(AccelCalCurrent(program));
    SetClock(9, 16, 1, 0);
    EXPECT_EQ(MinutesSinceAccelCal(program), 481);
    EXPECT_FALSE(AccelCalCurrent(program));
    SetClock(10, 8, 0, 0);
    EXPECT_EQ(MinutesSinceAccelCal(program), 1440);
    // Over midnight it holds as long.
    program.Center.AccelDailyCalibrationTime = ZeroDate() + std::chrono::hours(23);
    SetClock(10, 7, 0, 0);
    EXPECT_TRUE(AccelCalCurrent(program));
}

TEST_F(DailyCalibrationTest, HoldsWithinFiveDegrees) {
    const struct {
        const char* unit;
        double stored;
        float volts;  // 10 mV a degree Celsius
        bool holds;
    } cases[] = {
        {"Celsius", 20, 0.25F, true},    {"Celsius", 20, 0.251F, false},  {"Celsius", 20, 0.15F, true},
        {"Celsius", 20, 0.149F, false},  {"Fahrenheit", 68, 0.25F, true}, {"Fahrenheit", 68, 0.251F, false},
        {"Fahrenheit", 20, 0.2F, false},
    };
    for (const auto& test : cases) {
        program.Center.AccelDailyCalibrationTemperatureUnit = test.unit;
        program.Center.AccelDailyCalibrationTemp = test.stored;
        board->volts = test.volts;
        EXPECT_EQ(AccelCalCurrent(program), test.holds) << test.stored << ' ' << test.unit << ' ' << test.volts;
    }
    // Without a board the temperature is near the stored one.
    program.Run.ReviewMode = true;
    EXPECT_TRUE(AccelCalCurrent(program));
    program.Center.AccelDailyCalibrationTemp = 68;
    EXPECT_NEAR(ReadTemperature(program), 20, 0.1 * 5 / 9);
}

TEST(AccelAdjustment, BringsTheCertificateVoltsToOneGEachWay) {
    CenterConfig center;
    center.AccelRefPlus1GDC = 2.9713;
    center.AccelRefMinus1GDC = 2.1287;
    center.AccelRefCalibrationCoefficients = {-6.0527, 2.3734, 0.00012, -0.00001};
    center.AccelDailyCalibrationPlus1GVoltage = 2.9605;
    center.AccelDailyCalibrationMinus1GVoltage = 2.1279;
    ComputeAccelAdjustment(center);
    const auto gOf = [&](double v) {
        return center.AccelB + v * (center.AccelA1 + v * (center.AccelA2 + v * center.AccelA3));
    };
    EXPECT_NEAR(gOf(center.AccelRefPlus1GDC), 1, 1e-14);
    EXPECT_NEAR(gOf(center.AccelRefMinus1GDC), -1, 1e-14);
    EXPECT_NEAR(center.AccelA2 / center.AccelA1, 0.00012 / 2.3734, 1e-18) << "scaled as one";
    // The day's volts become the certificate's.
    const auto referenceVolts = [&](double v) { return center.AccelVoltageSlope * v + center.AccelVoltageOffset; };
    EXPECT_NEAR(referenceVolts(2.9605), 2.9713, 1e-14);
    EXPECT_NEAR(referenceVolts(2.1279), 2.1287, 1e-14);
}

TEST(AccelAdjustment, LeavesWhatItCannotDerive) {
    CenterConfig center;
    center.AccelRefPlus1GDC = 3;
    center.AccelRefMinus1GDC = 2;
    center.AccelRefCalibrationCoefficients = {-5, 2, 0, 0};
    center.AccelVoltageSlope = 7;
    center.AccelA1 = 7;
    CenterConfig noSpan = center;
    ComputeAccelAdjustment(noSpan);
    EXPECT_EQ(noSpan.AccelVoltageSlope, 7);
    EXPECT_EQ(noSpan.AccelA1, 7);
    CenterConfig swapped = center;
    swapped.AccelDailyCalibrationPlus1GVoltage = 2;
    swapped.AccelDailyCalibrationMinus1GVoltage = 3;
    ComputeAccelAdjustment(swapped);
    EXPECT_EQ(swapped.AccelVoltageSlope, 7);
    EXPECT_EQ(swapped.AccelA1, 2);
    CenterConfig flat = center;
    flat.AccelDailyCalibrationPlus1GVoltage = 3;
    flat.AccelDailyCalibrationMinus1GVoltage = 2;
    flat.AccelRefCalibrationCoefficients = {1, 0, 0, 0};
    ComputeAccelAdjustment(flat);
    EXPECT_EQ(flat.AccelVoltageSlope, 1);
    EXPECT_EQ(flat.AccelA1, 7);
}

TEST(Shared, ADocumentThatCannotBeWrittenLeavesTheOldFile) {
    TestMachine machine;
    Program program(machine.machine);
    const Path path = machine.Write("run.ddx", "old");
    PDDXFile document;
    machine.files.FailFromWrite(1);
    // The log cannot be written either: the box comes all the same.
    machine.dialogs.QueueAnswer(Answer::OK);
    EXPECT_FALSE(SavePDDX(program, document, path));
    EXPECT_EQ(machine.dialogs.TakeBoxes(),
              std::vector<std::string>{"\tUnable to create PDDX file:\\n" + PathText(path) + "\t48\tOK"});
    machine.files.FailFromWrite(0);
    EXPECT_EQ(machine.files.ReadBytes(path), "old");
    EXPECT_TRUE(SavePDDX(program, document, path));
    EXPECT_NE(machine.files.ReadBytes(path), "old");
    EXPECT_TRUE(SavePDDX(program, document, {}));
}

}  // namespace
}  // namespace bellmark
