#include "daq/drop_file_reader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <charconv>
#include <limits>

#include "platform/format.h"
#include "platform/numbers.h"

namespace bellmark {
namespace {

std::string Repeated(const std::string& text, int count) {
    std::string repeated;
    for (int i = 0; i < count; ++i) repeated += text;
    return repeated;
}

using Volts = std::vector<float>;

// For any file, the samples are numbers and no more than a block holds. "complete" decides whether the box appears.
TEST(DropFileReader, TakesWhatASavedDropFileHolds) {
    const std::string header =
        "Load Cell Calibration\r\nFWD Owner = Sample, Agency, 3\r\n\r\nSample,  Time (sec), Volts\r\n";
    const float largest = std::numeric_limits<float>::max();
    const struct {
        const char* defect;
        std::string text;
        Volts volts;
        bool complete = true;
    } cases[] = {
        {"none", header + "1,  0.0,   2.5000E-03,  10.0,  9.0\r\n2,0,-1.25E+00,1,1\r\n", {0.0025F, -1.25F}},
        {"three fields only", header + "1,0,2\r\n", {2}},
        {"empty", "", {}},
        {"blank lines between samples", header + "\r\n1,0,2\r\n   \r\n\t\r\n2,0,3\r\n\r\n", {2, 3}},
        {"LF ends", "a\nSample\n1,0,2\n2,0,3\n", {2, 3}},
        {"CR ends", "a\rSample\r1,0,2\r2,0,3\r", {2, 3}},
        {"last line without an end", "Sample\r\n1,0,2\r\n2,0,3", {2, 3}},
        {"no line of headings", "1,0,2\r\n2,0,3\r\n", {}},
        {"nothing behind the headings", header, {}},
        {"headings indented", "  Sample\r\n1,0,2\r\n", {2}},
        {"headings in small letters", "sample\r\n1,0,2\r\n", {}},
        {"binary", std::string("\x00\xff\x00Sample\x01,\x02,\r\n\x03", 15), {}},
        {"binary behind the headings", "Sample\r\n\xff\xfe,\x01,\x02\r\n", {0}},
        {"truncated in a number", header + "1,0,2.5\r\n2,0,3.", {2.5F, 3}},
        {"truncated in an exponent", header + "1,0,2.5\r\n2,0,3.5E", {2.5F, 3.5F}},
        {"truncated before the third field", header + "1,0,2.5\r\n2,0", {2.5F}, false},
        {"a line without third field amid samples", header + "1,0,2.5\r\nx\r\n3,0,4\r\n", {2.5F}, false},
        {"empty third field", header + "1,0,,7\r\n", {0}},
        {"text in place of volts", header + "1,0,abc\r\n2,0,3\r\n", {0, 3}},
        {"decimal commas", header + "1, 0,0000E+00, 2,5000E-03\r\n", {0}},
        {"no number", header + "1,0,nan\r\n2,0,inf\r\n3,0,-NAN\r\n4,0,Infinity\r\n", {0, 0, 0, 0}},
        {"plus signs", header + "1,0,+2.5\r\n", {2.5F}},
        {"units behind the number", header + "1,0,2.5 V\r\n", {2.5F}},
        {"second line of headings", "Sample\r\n1,0,2\r\nSample,Time,Volts\r\n2,0,3\r\n", {2, 0, 3}},
        {"beyond single precision, small", header + "1,0,1E-60\r\n", {0}},
        {"beyond single precision, large", header + "1,0,1E+39\r\n2,0,-1E+200\r\n", {largest, -largest}},
    };
    for (const auto& test : cases) {
        const DropSamples read = ReadSavedDropFile(test.text);
        EXPECT_EQ(read.volts, test.volts) << test.defect;
        EXPECT_EQ(read.complete, test.complete) << test.defect;
    }
}

std::string SampleLine(std::string_view volts, std::string_view rest = "-1.5690E+04,     -2.2222E-07,    1.4000E-09") {
    std::string line = "7,      4.0000E-04,  " + std::string(volts) + ',';
    line.resize(std::max<std::size_t>(line.size(), 35), ' ');
    return (line += "1.0016E+00,      ") += std::string(rest) + "\r\n";
}

TEST(DropFileReader, RoundsNumbersOfFiveDigitsToTheNearestFloat) {
    std::vector<float> expected;
    std::string text = "Sample,\r\n";
    for (int exponent = -6; exponent <= 9; ++exponent) {
        for (int digits = 10'000; digits < 100'000; digits += 97) {
            const std::string d = NumberText(digits);
            const std::string number = (digits % 2 == 0 ? "-" : "") + d.substr(0, 1) + '.' + d.substr(1) + 'E' +
                                       (exponent < 0 ? '-' : '+') + '0' + NumberText(std::abs(exponent));
            text += SampleLine(number);
            std::from_chars(number.data(), number.data() + number.size(), expected.emplace_back());
        }
    }
    ASSERT_LE(expected.size(), static_cast<std::size_t>(mostSamples));
    EXPECT_EQ(ReadSavedDropFile(text).volts, expected);
}

TEST(DropFileReader, TakesAllVoltsOfABoardAsTheLibraryReadsThem) {
    constexpr int counts = 65536;  // of 16 bits from -10 to 10 V
    for (int begin = 0; begin < counts; begin += mostSamples) {
        Volts expected;
        std::string text = "Sample,\r\n";
        for (int count = begin; count < std::min(begin + mostSamples, counts); ++count) {
            const std::string volts = Format(20.0 * count / counts - 10, "0.0000E+00");
            text += SampleLine(volts);
            std::from_chars(volts.data(), volts.data() + volts.size(), expected.emplace_back());
        }
        EXPECT_TRUE(ReadSavedDropFile(text).volts == expected) << begin;
    }
}

/// A blank before a line changes nothing, but avoids the quick way for the program's own lines.
TEST(DropFileReader, ReadsItsOwnLinesAsItReadsAnyOthers) {
    const std::string ofLoadCell = SampleLine("-1.2345E-01", "-1.2345678E+03");
    const std::string ofAccelerometer = SampleLine("-1.2345E-01");
    ASSERT_EQ(ofLoadCell.size(), 68U);
    ASSERT_EQ(ofAccelerometer.size(), 97U);
    for (std::size_t i = 0; i < ofLoadCell.size() + ofAccelerometer.size(); ++i) {
        const bool isLoad = i < ofLoadCell.size();
        const std::string& line = isLoad ? ofLoadCell : ofAccelerometer;
        const std::size_t place = isLoad ? i : i - ofLoadCell.size();
        for (const char put : {'\r', '\n', ',', ' ', 'x', '-', '9', '.', ':', '/'}) {
            std::string other = line;
            other[place] = put;
            const auto read = [&](const std::string& before) {
                std::string text = "Sample,\r\n";
                for (const std::string& each : {line, other, line, line}) text += before + each;
                return ReadSavedDropFile(text);
            };
            const DropSamples quick = read("");
            const DropSamples slow = read(" ");
            EXPECT_EQ(quick.volts, slow.volts) << other;
            EXPECT_EQ(quick.complete, slow.complete) << other;
            EXPECT_EQ(quick.lowest, slow.lowest) << other;
        }
    }
}

TEST(DropFileReader, TakesWhatATemplateFileHolds) {
    const struct {
        const char* defect;
        std::string text;
        Volts volts;
    } cases[] = {
        {"none", "0.5\r\n-1.5E-02\r\n2\r\n", {0.5F, -0.015F, 2}},
        {"commas", "0.5, -1.5E-02 ,2", {0.5F, -0.015F, 2}},
        {"LF and CR ends", "1\n2\r3\r\n4", {1, 2, 3, 4}},
        {"empty", "", {}},
        {"empty items", ",,1,\r\n\r\n ,2,\r\n", {1, 2}},
        {"text", "abc,1\r\n", {0, 1}},
        {"no number", "nan,inf,-1", {0, 0, -1}},
        {"truncated in a number", "1.25,2.", {1.25F, 2}},
    };
    for (const auto& test : cases) {
        const DropSamples read = ReadTemplateFile(test.text);
        EXPECT_EQ(read.volts, test.volts) << test.defect;
        EXPECT_TRUE(read.complete) << test.defect;
    }
}

TEST(DropFileReader, TakesNoMoreThanABlockHolds) {
    for (const auto& [lines, taken] : {std::pair(14999, 14999), {15000, 15000}, {15001, 15000}, {20000, 15000}}) {
        const DropSamples saved = ReadSavedDropFile("Sample\r\n" + Repeated("1,0,2\r\n", lines));
        EXPECT_EQ(saved.volts, Volts(static_cast<std::size_t>(taken), 2));
        EXPECT_EQ(saved.complete, lines == taken) << lines;
        const DropSamples flat = ReadTemplateFile(Repeated("2\r\n", lines));
        EXPECT_EQ(flat.volts, Volts(static_cast<std::size_t>(taken), 2));
        EXPECT_EQ(flat.complete, lines == taken) << lines;
    }
}

TEST(DropFileReader, KeepsTheExtremes) {
    const DropSamples read = ReadTemplateFile("1,-3.5,2.25,0");
    EXPECT_EQ(read.lowest, -3.5F);
    EXPECT_EQ(read.highest, 2.25F);
}

TEST(DropFileReader, TakesTheHeaderByItsRules) {
    using Member = std::optional<double> DropFileHeader::*;
    const struct {
        const char* line;
        Member member;
        std::optional<double> value;
    } cases[] = {
        {"Daily Shunt Multiplier = 1.002", &DropFileHeader::shuntMultiplier, 1.002},
        {"  Daily Shunt=0.998 = 7", &DropFileHeader::shuntMultiplier, 0.998},
        {"Daily Shunt Multiplier", &DropFileHeader::shuntMultiplier, 0},
        {"daily shunt multiplier = 1.002", &DropFileHeader::shuntMultiplier, {}},
        {"The Daily Shunt = 1.002", &DropFileHeader::shuntMultiplier, {}},
        {"Daily +G Voltage = 5.01", &DropFileHeader::plus1GVoltage, 5.01},
        {"Daily +G Voltage (mV) = 5010", &DropFileHeader::plus1GVoltage, 5.01},
        {"Daily +G Voltage = 5010 mv", &DropFileHeader::plus1GVoltage, 5.01},
        {"Daily +G Voltage = 5010 MV", &DropFileHeader::plus1GVoltage, 5010},
        {"Daily +G Voltage (mV) = 9", &DropFileHeader::plus1GVoltage, 9},
        {"Daily +G Voltage (mV) = 10", &DropFileHeader::plus1GVoltage, 0.01},
        {"Daily +G Voltage = 5010", &DropFileHeader::plus1GVoltage, 5010},
        {"Daily -G Voltage (mV) = 9", &DropFileHeader::minus1GVoltage, 0.009},
        {"Daily -G Voltage (mV) = -2128", &DropFileHeader::minus1GVoltage, -2.128},
        {"Daily -G Voltage = -2128 mv", &DropFileHeader::minus1GVoltage, -2.128},
        {"Daily -G Voltage = 2128 mv", &DropFileHeader::minus1GVoltage, 2128},
        {"Daily -G Voltage = -10 mv", &DropFileHeader::minus1GVoltage, -10},
        {"Daily -G Voltage = 2.128", &DropFileHeader::minus1GVoltage, 2.128},
        {"Initial Burst Ave = 2.9713456789", &DropFileHeader::burstAverage, 2.971346},
        {"Initial Burst Std. Dev. = 1.25E-03", &DropFileHeader::burstStdDev, 0.00125},
        {"Initial Burst Std. Dev. = abc", &DropFileHeader::burstStdDev, 0},
    };
    for (const auto& test : cases) {
        for (const char* rest : {"\r\n", "\r\nSample\r\n1,0,2\r\n"}) {
            const DropSamples read = ReadSavedDropFile(std::string(test.line) + rest);
            EXPECT_EQ(read.header.*test.member, test.value) << test.line;
        }
    }
}

}  // namespace
}  // namespace bellmark
