#include "platform/numbers.h"
#include "platform/typed_number.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <limits>
#include <random>

namespace bellmark {
namespace {

TEST(Numbers, ReadsTheLongestLeadingNumber) {
    const struct {
        std::string_view text;
        double value;
        bool whole;  ///< the text holds nothing but the number
    } cases[] = {
        {"12.5", 12.5, true},      {" \t-3 ", -3, true},  {"+7", 7, true},
        {"12.5abc", 12.5, false},  {".5", 0.5, true},     {"5.", 5, true},
        {"1.5E-07", 1.5e-7, true}, {"2e", 2, false},      {"1.2.3", 1.2, false},
        {"abc", 0, false},         {"", 0, false},        {".", 0, false},
        {"-", 0, false},           {"+-1", 0, false},     {"- 1", 0, false},
        {"inf", 0, false},         {"nan", 0, false},     {"0x10", 0, false},
        {"1e999", 0, false},       {"22,481", 22, false}, {"2.5, 3.5", 2.5, false},
        {"-0.25", -0.25, true},
    };
    for (const auto& number : cases) {
        EXPECT_EQ(ReadNumber(number.text), number.value) << number.text;
        EXPECT_EQ(NumberIn(number.text).has_value(), number.whole) << number.text;
        if (number.whole) {
            EXPECT_EQ(NumberIn(number.text), number.value) << number.text;
        }
    }
}

TEST(Numbers, WritesTheShortestText) {
    EXPECT_EQ(NumberText(0.1), "0.1");
    EXPECT_EQ(NumberText(0.1F), "0.1");
    EXPECT_EQ(NumberText(-0.0), "0");
    EXPECT_EQ(NumberText(100.0), "100");
    EXPECT_EQ(NumberText(999999999999999.0), "999999999999999");
    EXPECT_EQ(NumberText(1e15), "1E+15");
    EXPECT_EQ(NumberText(0.0001), "0.0001");
    EXPECT_EQ(NumberText(1.5e-7), "1.5E-07");
    EXPECT_EQ(NumberText(-1e-5), "-1E-05");
    EXPECT_EQ(NumberText(1.25e300), "1.25E+300");
    EXPECT_EQ(NumberText(-std::numeric_limits<double>::infinity()), "-inf");
    EXPECT_EQ(NumberText(-std::numeric_limits<double>::quiet_NaN()), "nan");
    EXPECT_EQ(NumberText(std::numeric_limits<long long>::min()), "-9223372036854775808");
}

TEST(Numbers, WhatIsWrittenReadsBack) {
    std::mt19937_64 random(20120309);
    for (int i = 0; i < 20000; ++i) {
        const std::uint64_t bits = random();
        double value = 0;
        std::memcpy(&value, &bits, sizeof value);
        if (value - value != 0) continue;  // infinity or no number
        ASSERT_EQ(NumberIn(NumberText(value)), value) << NumberText(value);
    }
}

TEST(Numbers, ResultsAreRoundedHalfToEven) {
    EXPECT_EQ(Round(2.5, 0), 2);
    EXPECT_EQ(Round(3.5, 0), 4);
    EXPECT_EQ(Round(0.125, 2), 0.12);
    EXPECT_EQ(Round(-0.375, 2), -0.38);
    EXPECT_EQ(Round(1.005, 2), 1.0) << "1.005 times 100 is 100.49999999999999 in double precision";
    EXPECT_EQ(Round(1250, -2), 1200);
    EXPECT_EQ(Round(1e300, 10), 1e300);
    EXPECT_EQ(RoundToWhole(2.5), 2);
    EXPECT_EQ(RoundToWhole(-1.5), -2);
    EXPECT_EQ(RoundToWhole(-9223372036854775808.0), std::numeric_limits<long long>::min());
    for (const double value : {9223372036854775808.0, -1e19, std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_THROW(RoundToWhole(value), std::range_error) << value;
    }
}

TEST(TypedNumber, CommasPartThousandsAndNothingElse) {
    for (const auto& [text, number] : {std::pair{"3995.2", 3995.2},
                                       {" 3,995.2 ", 3995.2},
                                       {"-1,234,567", -1234567.0},
                                       {"+12,345", 12345.0},
                                       {"1E-05", 1e-5},
                                       {"1,234.5", 1234.5}}) {
        EXPECT_EQ(TypedNumber(text), number) << text;
    }
    for (const char* text : {"3995,2", "3,99", "0,125", "3.995,2", "1,234,56", ",125", "12,", "1,2345", "1234,567",
                             "-,125", "1,234.5,6", "--1,234", "", "abc", "1,abc", "1.5 V"}) {
        EXPECT_EQ(TypedNumber(text), std::nullopt) << text;
    }
}

}  // namespace
}  // namespace bellmark
