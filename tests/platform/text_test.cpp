#include "platform/text.h"

#include <gtest/gtest.h>

namespace bellmark {
namespace {

TEST(Text, EveryByteOfTheCodePageComesBack) {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) bytes += static_cast<char>(byte);
    EXPECT_EQ(ToWindows1252(FromWindows1252(bytes)), bytes);
    EXPECT_EQ(FromWindows1252("\x80 \x99 \xB5m \x81"), "€ ™ µm \xC2\x81");
    // Letters are compared in groups: each place of a letter beyond ASCII in two groups, and a second one behind it.
    for (std::size_t place = 0; place < 140; ++place) {
        std::string text(150, 'a');
        text[place] = text[148] = '\xB5';
        EXPECT_EQ(ToWindows1252(FromWindows1252(text)), text) << place;
    }
}

TEST(Text, ATextThatCannotBeStoredStaysAsItIs) {
    std::string text = "µm " + std::string(200, 'a') + "Ω µm";
    const std::string before = text;
    EXPECT_THROW(ConvertToWindows1252(text), EncodingError);
    EXPECT_EQ(text, before);
}

TEST(Text, WhatTheCodePageLacksIsNamed) {
    const auto reason = [](std::string_view text) -> std::string {
        try {
            ToWindows1252(text);
        } catch (const EncodingError& error) {
            return error.what();
        }
        return {};
    };
    EXPECT_EQ(reason("10 kΩ"),
              "The character \"Ω\" (U+03A9) cannot be stored: the files' code page, Windows-1252, lacks it");
    EXPECT_NE(reason("😀").find("(U+1F600)"), std::string::npos);
    EXPECT_NE(reason("\xC2\x80").find("(U+0080)"), std::string::npos) << "the byte 80 is the euro sign";
    // Cut short, lone continuation, overlong, surrogate, beyond the last character.
    for (const char* broken :
         {"\xE2\x82", "\x80", "\xC0\xAF", "\xE0\x80\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xFF"}) {
        EXPECT_EQ(reason(broken), "The text is not valid UTF-8");
    }
}

TEST(Text, LinesEndAtEitherEndingOrBoth) {
    using Lines = std::vector<std::string_view>;
    EXPECT_EQ(SplitLines("a\r\nb\rc\nd"), (Lines{"a", "b", "c", "d"}));
    EXPECT_EQ(SplitLines("a\n\r\n"), (Lines{"a", ""}));
    EXPECT_EQ(SplitLines("\r\r\n"), (Lines{"", ""}));
    EXPECT_EQ(SplitLines(""), Lines{});
    EXPECT_EQ(Split("a,,b,", ','), (std::vector<std::string>{"a", "", "b", ""}));
    EXPECT_EQ(Split("", ',').size(), 1U);
}

TEST(Text, CountsAndCutsCharacters) {
    EXPECT_EQ(CharacterCount("±0.5 °C"), 7U);
    EXPECT_EQ(FirstCharacters("±0.5 °C", 6), "±0.5 °");
    EXPECT_EQ(FirstCharacters("±", 0), "");
    EXPECT_EQ(FirstCharacters("€", 2), "€");
    EXPECT_EQ(Trim(" \ta b\t "), "a b");
    EXPECT_EQ(Trim(" \t "), "");
}

TEST(Text, ListsGiveTheirFields) {
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

TEST(Text, BlanksExtensionsAndZeros) {
    EXPECT_EQ(CompressBlanks("   a  b \t  c    "), "a b \t c");
    EXPECT_EQ(CompressBlanks("    "), "");
    EXPECT_EQ(FileExtension("a.b.ddx"), "ddx");
    EXPECT_EQ(FileExtension("noextension"), "noextension");
    EXPECT_EQ(FileExtension("ends."), "");
    EXPECT_EQ(ZeroIfEmpty(""), "0");
    EXPECT_EQ(ZeroIfEmpty("0.0"), "0.0");
}

TEST(Text, CaseIsOfTheLettersAToZAlone) {
    EXPECT_TRUE(EqualIgnoringCase("Sensor [1]", "SENSOR [1]"));
    EXPECT_FALSE(EqualIgnoringCase("[", "{")) << "they lie as far apart as the letters' cases";
    EXPECT_FALSE(EqualIgnoringCase("ab", "abc"));
    EXPECT_EQ(LowerCase("ÄB"), "Äb");
    EXPECT_TRUE(StartsWithIgnoringCase("Daily Shunt 1", "DAILY SHUNT"));
    EXPECT_FALSE(StartsWith("Daily", "Daily Shunt"));
}

}  // namespace
}  // namespace bellmark
