#include "platform/file_text.h"

#include <gtest/gtest.h>

#include "platform/files.h"
#include "platform/text.h"
#include "tests/support/temporary_folder.h"

namespace bellmark {
namespace {

using namespace std::string_literals;

TEST(FileText, Utf16IsReadWhereItsMarkSaysSo) {
    EXPECT_EQ(FromFileBytes("\xFF\xFE[\0A\0]\0\xB5\0\xAC\x20"s), "[A]µ€");
    EXPECT_EQ(FromFileBytes("\xFE\xFF\0[\0A\0]\0\xB5\x20\xAC"s), "[A]µ€");
    EXPECT_EQ(FromFileBytes("[A]\xB5"s), "[A]µ");
    EXPECT_EQ(FromFileBytes("\xFF\xFE"s), "");
    EXPECT_EQ(FromFileBytes("\xFF\xFE[\0A"s), "[") << "cut within a character";
    // "Ł" and half of a surrogate pair: the next save would lose them.
    EXPECT_THROW(FromFileBytes("\xFF\xFE\x41\x01"s), EncodingError);
    EXPECT_THROW(FromFileBytes("\xFF\xFE\x3D\xD8"s), EncodingError);
    const TemporaryFolder folder;
    DiskFileSystem files;
    files.ReplaceFile(folder / "a.ini", "\xFF\xFE\x41\x01"s);
    EXPECT_THROW(ReadTextFile(files, folder / "a.ini"), FileError);
}

struct StorableCase {
    const char* text;
    const char* stored;
};

TEST(FileText, WhatCannotBeStoredIsLeftOut) {
    const StorableCase cases[] = {
        {"[A]\r\nPath=/home/Łódź/\r\nGain=1.0025\r\n", "[A]\r\nPath=\r\nGain=1.0025\r\n"},
        {"Path = Ł\nOther = 2", "Path = \nOther = 2"},
        {"Filename: Łódź.F25\r\n\r\n  1.25", "Filename: ?ód?.F25\r\n\r\n  1.25"},
        {"Ł=1.5", "?=1.5"},
        {"a\xFF=1\r\nb=\xC3", "a?=1\r\nb="},
    };
    for (const auto& [text, stored] : cases) {
        EXPECT_EQ(WithoutUnstorable(text).text, stored);
        EXPECT_FALSE(WithoutUnstorable(text).isWhole);
    }
    EXPECT_TRUE(WithoutUnstorable("Grün=1\r\n").isWhole);
}

}  // namespace
}  // namespace bellmark
