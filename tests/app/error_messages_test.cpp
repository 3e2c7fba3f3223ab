#include "app/error_messages.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <sstream>
#include <stdexcept>

namespace bellmark {
namespace {

using namespace std::string_literals;

/// The values of the messages that take some.
const std::map<int, std::vector<MessageValue>> valuesOf{
    {103, {12.0}},         {104, {"B"s, 3.5, 3.456, "1000"s}},
    {105, {"{2} "s}},      {112, {MakeDateTime(2011, 3, 9)}},
    {113, {5.08}},         {150, {"Serial Number"s}},
    {210, {0.123, 0.001}}, {211, {0.05, "A"s}},
    {220, {1.25, 10.0}},   {221, {100.0, 9000.0}},
    {302, {5.25, -5.0}},   {303, {24000.0}},
};

struct Expected {
    int code = 0;
    bool english = true;
    int style = 0;
    std::string title;
    std::string text;  ///< lines end in '\n'
};

/// Of messages.txt, where each message begins with a line "=== code [metric] style title". In metric units it is there
/// only where it then reads differently.
std::vector<Expected> ExpectedMessages() {
    std::ifstream file(BELLMARK_SOURCE_FOLDER "/tests/app/messages.txt");
    std::vector<Expected> messages;
    for (std::string line; std::getline(file, line);) {
        if (!line.starts_with("=== ")) {
            messages.back().text += line + '\n';
            continue;
        }
        std::istringstream words(line.substr(4));
        Expected message;
        std::string style;
        words >> message.code >> style;
        message.english = style != "metric";
        if (!message.english) words >> style;
        message.style = std::stoi(style);
        std::getline(words >> std::ws, message.title);
        messages.push_back(message);
    }
    for (Expected& message : messages) message.text.pop_back();
    return messages;
}

std::string WithCarriageReturns(const std::string& lines) {
    std::string text;
    for (const char letter : lines) text += letter == '\n' ? "\r\n" : std::string(1, letter);
    return text;
}

CalibrationRun RunWithCounts(bool englishUnits) {
    CalibrationRun run;
    run.EnglishUnits = englishUnits;
    run.NumberLoadLevels = 4;
    run.NumberDropsPerLoadLevel = 6;
    run.NumberSensors = 7;
    run.CurrentHeightIndex = 2;
    run.MessageParameters[1] = "Sensor 3";
    return run;
}

const MessageFacts facts{"/bellmark", MakeDateTime(2012, 3, 10), "pound-force"};

void ExpectMessage(const Expected& expected, bool english) {
    SCOPED_TRACE(std::to_string(expected.code) + (english ? " English" : " metric"));
    auto run = RunWithCounts(english);
    const auto values = valuesOf.find(expected.code);
    ErrorMessages(run, expected.code, values == valuesOf.end() ? std::vector<MessageValue>() : values->second, facts);
    const auto box = ComposedBox(run);
    EXPECT_EQ(box.title, expected.title);
    EXPECT_EQ(box.text, WithCarriageReturns(expected.text));
    EXPECT_EQ(box.style, expected.style);
    EXPECT_EQ(box.helpContext, 10000 + expected.code);
    EXPECT_EQ(run.LastMessageCode, expected.code);
    const bool usesElementOne = box.text.find("Sensor 3") != std::string::npos;
    EXPECT_EQ(std::holds_alternative<std::monostate>(run.MessageParameters[1]), usesElementOne);
}

TEST(ErrorMessages, EveryMessageReadsAsItShouldInBothUnitSystems) {
    const auto messages = ExpectedMessages();
    EXPECT_EQ(messages.size(), 49u);
    for (const Expected& expected : messages) {
        ExpectMessage(expected, expected.english);
        const bool differs = std::any_of(messages.begin(), messages.end(), [&](const Expected& other) {
            return other.code == expected.code && !other.english;
        });
        if (!differs) ExpectMessage(expected, false);
    }
}

TEST(ErrorMessages, LoadAboveTheLimitFollowsTheLoadCellsUnit) {
    auto run = RunWithCounts(true);
    ErrorMessages(run, 303, {24000.0}, {{}, {}, "newton"});
    // 24000 lb x 0.0044482 kN/lb = 106.7568 kN
    EXPECT_EQ(run.MessageText.substr(0, run.MessageText.find("\r\nCheck")),
              "The maximum load of the drop was 106.8kN.\r\nThe allowable maximum is 105 kN");
}

TEST(ErrorMessages, NoiseIsToldInTheUnitsOfTheTrial) {
    CalibrationRun run = RunWithCounts(true);
    run.Trial.procedure = Procedure::Sensors;
    run.Trial.shape.englishUnits = false;
    ErrorMessages(run, 113, {5.04});
    EXPECT_NE(run.MessageText.find("5.0 microns"), std::string::npos);
    ErrorMessages(run, 103, {100.0});
    EXPECT_NE(run.MessageText.find("0.445 kN"), std::string::npos);
}

TEST(ErrorMessages, FewerThanFourHeightsMayBecomeFour) {
    auto run = RunWithCounts(true);
    run.NumberLoadLevels = 3;
    ErrorMessages(run, 203);
    EXPECT_EQ(run.MessageText,
              "The number of drops needed to ensure the error on the gain\r\n"
              "is less than 0.3% is more than 10.\r\n"
              "Try moving the FWD closer to obtain higher peak deflections\r\n"
              "or go to four (4) drop heights.\r\n\r\n"
              "Press <OK> to continue ...");
}

TEST(ErrorMessages, MissingFilesAreListed) {
    CalibrationRun run;
    run.MessageParameters[2] = "missing";
    run.MessageParameters[5] = 1.0;
    ErrorMessages(run, 300, {}, facts);
    EXPECT_EQ(run.MessageTitle, "Missing Critical File (300)");
    EXPECT_EQ(run.MessageText,
              "The following file is missing from the program directory: \r\n/bellmark\r\n\r\n"
              "\t\u2022Ferrylink.exe - FWD file conversion software \r\n\r\n"
              "Please copy the file into this directory before continuing.\r\nExecution will terminate.");
    EXPECT_EQ(ComposedBox(run).style, 16400);
    EXPECT_EQ(ComposedBox(run).helpContext, 10300);

    for (std::size_t file = 1; file <= 4; ++file) run.MessageParameters[file] = "missing";
    run.MessageParameters[5] = 4.0;
    ErrorMessages(run, 300, {}, facts);
    EXPECT_EQ(run.MessageTitle, "Missing Critical Files (300)");
    EXPECT_EQ(run.MessageText,
              "The following files are missing from the program directory: \r\n/bellmark\r\n\r\n"
              "\t\u2022BellmarkCenterConfig.ini - center configuration file \r\n"
              "\t\u2022Ferrylink.exe - FWD file conversion software \r\n"
              "\t\u2022CertificateTemplate.rtf - calibration certificate template\r\n"
              "\t\u2022'FWD Calibration History.mdb' - FWD Calibration History database \r\n\r\n"
              "Please copy the files into this directory before continuing.\r\nExecution will terminate.");
}

TEST(ErrorMessages, NumbersWithoutMessage) {
    struct Case {
        int code;
        const char* textAfter;
    };
    for (const auto& [code, textAfter] : {Case{99, "before"}, Case{-1, "before"}, Case{305, ""}}) {
        CalibrationRun run;
        run.MessageTitle = "title";
        run.MessageText = "before";
        ErrorMessages(run, code);
        EXPECT_EQ(run.MessageText, textAfter) << code;
        EXPECT_EQ(run.MessageTitle, "title") << code;
        EXPECT_EQ(run.LastMessageCode, code);
    }
}

TEST(ErrorMessages, CallersStyleReplacesTheMessagesOwn) {
    CalibrationRun run;
    ErrorMessages(run, 120);
    EXPECT_EQ(ComposedBox(run, 52).style, 52);
}

TEST(ErrorMessages, MissingAndWrongValuesAreNamed) {
    auto run = RunWithCounts(true);
    const auto failure = [&run](int code, const std::vector<MessageValue>& values) -> std::string {
        try {
            ErrorMessages(run, code, values);
        } catch (const std::invalid_argument& error) {
            return error.what();
        }
        return "none";
    };
    EXPECT_EQ(failure(104, {"A"s, 1.0}), "message 104 needs a number as value 3");
    EXPECT_EQ(failure(303, {"much"s}), "message 303 needs a number as value 1");
    EXPECT_EQ(failure(112, {}), "message 112 needs a date as value 1");
    EXPECT_EQ(failure(211, {1.0, 2.0}), "message 211 needs a text as value 2");
    run.MessageParameters[1] = 3.0;
    EXPECT_EQ(failure(270, {}), "message 270 needs a text as message parameter 1");
    EXPECT_EQ(run.LastMessageCode, 0);
}

}  // namespace
}  // namespace bellmark
