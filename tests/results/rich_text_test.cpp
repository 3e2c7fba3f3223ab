// Rich text: keywords found wherever formatting cuts them, blocks removed, damaged documents refused.

#include "results/rich_text.h"

#include <gtest/gtest.h>

#include "results/rich_text_reader.h"

namespace bellmark {
namespace {

std::string Document(const std::string& body) {
    return "{\\rtf1\\ansi{\\fonttbl{\\f0 Key;}}" + body + "}";
}

struct ReplaceCase {
    const char* name;
    const char* body;
    const char* value;
    const char* expected;
};

TEST(RichText, ReplacesTheKeywordWhateverLiesBetweenItsLetters) {
    const ReplaceCase cases[] = {
        {"plain", "a Key b", "v", "a {\\highlight0 v} b"},
        {"first of two", "Key Key", "v", "{\\highlight0 v} Key"},
        {"a part of a word", "MonKeys", "v", "Mon{\\highlight0 v}s"},
        {"control word inside", "K\\b e\\b0 y.", "v", "{\\highlight0 v}\\b \\b0 ."},
        {"groups inside", "{\\i K}{\\b ey}.", "v", "{\\i {\\highlight0 v}}{\\b }."},
        {"line break of the source inside", "K\r\ney", "v", "{\\highlight0 v}\r\n"},
        {"written as hexadecimal", "K\\'65y", "v", "{\\highlight0 v}"},
        {"written as Unicode", "K\\u101?y", "v", "{\\highlight0 v}"},
        {"hidden group inside", "K{\\*\\bkmkstart Key}ey", "v", "{\\highlight0 v}{\\*\\bkmkstart Key}"},
        {"control word right before", "\\b0Key1", "", "\\b0 1"},
        {"digits would join the word", "x\\fs20\\'4bey5", "", "x\\fs20 5"},
        {"special letters", "Key", "a\\b{c}\t\xC3\xA9\xE2\x82\xAC\r\nd",
         "{\\highlight0 a\\\\b\\{c\\}\\tab \\'e9\\'80\\par d}"},
        {"beyond the code page", "Key", "\xCE\xA9\xF0\x9F\x98\x80",
         "{\\highlight0 {\\uc1\\u937?}{\\uc1\\u-10179?\\u-8704?}}"},
        {"none there", "K e y", "v", "K e y"},
    };
    for (const auto& [name, body, value, expected] : cases) {
        RichText text(Document(body));
        text.ReplaceKeyword(value, "Key");
        EXPECT_EQ(text.Rtf(), Document(expected)) << name;
    }
}

TEST(RichText, AnotherCodePageGetsItsLettersByNumber) {
    RichText text("{\\rtf1\\ansicpg1250 Key}");
    EXPECT_TRUE(text.ReplaceKeyword("\xC3\xA9", "Key"));
    EXPECT_EQ(text.Rtf(), "{\\rtf1\\ansicpg1250 {\\highlight0 {\\uc1\\u233?}}}");
}

TEST(RichText, AValueThatHoldsAKeywordStaysWhole) {
    RichText text(Document("Owner LC1"));
    EXPECT_TRUE(text.ReplaceKeyword("LC1 Roads", "Owner"));
    EXPECT_TRUE(text.ReplaceKeyword("1", "LC1"));
    EXPECT_FALSE(text.ReplaceKeyword("2", "LC1"));
    EXPECT_EQ(text.Rtf(), Document("{\\highlight0 LC1 Roads} {\\highlight0 1}"));
}

TEST(RichText, RemovesABlockAndLeavesGroupsBalanced) {
    const struct {
        const char* body;
        const char* expected;
    } cases[] = {
        {"a FROM b TO c", "a TO c"},
        {"{\\b FROM}\\par text\\par TO", "{\\b }TO"},
        {"a{\\b FROM x{\\i y}\\par}{\\fs40 TO}", "a{\\b }{\\fs40 TO}"},
        {"FROM\\par\\trowd\\cellx100\\intbl 1\\cell 2\\cell\\row\\pard\\qc TO", "\\pard\\qc TO"},
        {"FROM{\\pict\\bin5 }{{{}\\par}\\b TO", "\\b TO"},
        {"TO FROM", "TO FROM"},
        {"FROM only", "FROM only"},
        {"\\b0FROM\\i0{x}{y}TO", "\\b0 \\i0 TO"},
    };
    for (const auto& [body, expected] : cases) {
        RichText text(Document(body));
        text.RemoveBetween("FROM", "TO");
        EXPECT_EQ(text.Rtf(), Document(expected)) << body;
        EXPECT_NO_THROW(RichText(text.Rtf())) << body;
    }
    // What was filled in inside goes with the block, what stands outside stays.
    RichText text(Document("K1 FROM K2 TO K3"));
    for (const char* keyword : {"K1", "K2", "K3"}) text.ReplaceKeyword("v", keyword);
    EXPECT_TRUE(text.RemoveBetween("FROM", "TO"));
    EXPECT_EQ(text.Rtf(), Document("{\\highlight0 v} TO {\\highlight0 v}"));
}

TEST(RichText, RefusesWhatIsNoRichText) {
    const struct {
        std::string bytes;
        const char* why;
    } cases[] = {
        {"", "is no rich-text document"},
        {"Dear customer,", "is no rich-text document"},
        {"PK\x03\x04", "is no rich-text document"},
        {"{\\rtf1 cut off", "is damaged: it ends in the middle"},
        {"{\\rtf1{\\b", "is damaged: it ends in the middle"},
        {"{\\rtf1 x\\", "is damaged: it ends in the middle"},
        {"{\\rtf1\\bin999999999 x}", "is damaged: it ends in the middle"},
        {"{\\rtf1" + std::string(100'000, '{'), "is damaged: its groups are nested without end"},
    };
    for (const auto& [bytes, why] : cases) {
        try {
            RichText text(bytes);
            ADD_FAILURE() << bytes.substr(0, 40);
        } catch (const RichTextError& error) {
            EXPECT_STREQ(error.what(), why) << bytes.substr(0, 40);
        }
    }
    EXPECT_EQ(RichText("{\\rtf1 a}} behind {").Rtf(), "{\\rtf1 a}} behind {");
}

TEST(RichTextReader, ShowsParagraphsTabsAndFormats) {
    const FormattedText text = ReadRichText(
        "{\\rtf1{\\fonttbl{\\f0 Arial;}}\\pard\\qc\\sa100\\brdrb\\brdrs\\brdrw10\\fs36{\\b Title} 1\\par\r\n"
        "\\pard\\tqr\\tx1440\\fs20\\ul a\\ulnone\\tab\\u8364?\\'e9\\line b\\par}");
    ASSERT_EQ(text.paragraphs.size(), 2U);
    const FormattedParagraph& title = text.paragraphs[0];
    EXPECT_EQ(title.alignment, Alignment::Center);
    EXPECT_EQ(title.spaceAfter, 5);
    EXPECT_TRUE(title.hasRuleBelow);
    ASSERT_EQ(title.runs.size(), 2U);
    EXPECT_EQ(title.runs[0], (FormattedRun{"Title", 18, true, false, false}));
    EXPECT_EQ(title.runs[1], (FormattedRun{" 1", 18, false, false, false}));
    const FormattedParagraph& line = text.paragraphs[1];
    EXPECT_EQ(line.alignment, Alignment::Left);
    EXPECT_FALSE(line.hasRuleBelow);
    EXPECT_EQ(line.tabs, (std::vector<TabStop>{{72, Alignment::Right}}));
    EXPECT_EQ(PlainText(text), "Title 1\na\t\xE2\x82\xAC\xC3\xA9\nb");
}

}  // namespace
}  // namespace bellmark
