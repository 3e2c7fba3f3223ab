#include "platform/profile_strings.h"

#include <gtest/gtest.h>

#include "platform/files.h"
#include "platform/text.h"
#include "tests/support/failing_file_system.h"
#include "tests/support/temporary_folder.h"

namespace bellmark {
namespace {

// One special case per line; the values expected below follow from the rules of the service.
constexpr std::string_view traps =
    "above=unreachable\r\n"
    " [ First ] behind the bracket\r\n"
    "; comment=1\r\n"
    "\tPlain \t=  12.5 \t\r\n"
    "plain=second of its name\n"
    "Equals=a=b;c#d\r"
    "Quoted = \"  kept  \" \r\n"
    "Single='x'\r\n"
    "Uneven=\"x'\r\n"
    "OneQuote=\"\r\n"
    "Empty=\r\n"
    "Nested=\"\"x\"\"\r\n"
    "not a key\r\n"
    "#hash=1\r\n"
    "=no name\r\n"
    "[FIRST]\r\n"
    "Late=never found\r\n"
    "[Open\r\n"
    "Unit=\xC2\xB5m";

TEST(ProfileStrings, Reads) {
    const ProfileStrings strings(traps);
    const struct {
        std::string_view section;
        std::string_view key;
        std::string_view value;
    } cases[] = {
        {"first", "PLAIN", "12.5"},       {"First", "Equals", "a=b;c#d"}, {"First", "Quoted", "  kept  "},
        {"First", "Single", "x"},         {"First", "Uneven", "\"x'"},    {"First", "OneQuote", "\""},
        {"First", "Empty", ""},           {"First", "Nested", "\"x\""},   {"First", "#hash", "1"},
        {"First", "", "no name"},         {"Open", "Unit", "µm"},         {"First", "; comment", "absent"},
        {"First", "not a key", "absent"}, {"First", "Late", "absent"},    {"", "above", "absent"},
    };
    for (const auto& line : cases) EXPECT_EQ(strings.Get(line.section, line.key, "absent  "), line.value) << line.key;
    EXPECT_TRUE(strings.HasSection("OPEN"));
    EXPECT_FALSE(strings.HasSection("Plain"));
    EXPECT_EQ(strings.Text(), traps);
}

TEST(ProfileStrings, CutsToTheBuffer) {
    const ProfileStrings strings("[A]\nLong=" + std::string(300, 'x') + "\nUnit=µµµ\nQuoted=\"abc\"\nNul=a" +
                                 std::string(1, '\0') + "b");
    EXPECT_EQ(strings.Get("A", "Long", {}, 255), std::string(254, 'x'));
    EXPECT_EQ(strings.Get("A", "Unit", {}, 3), "µµ") << "characters, not bytes";
    EXPECT_EQ(strings.Get("A", "Quoted", {}, 3), "ab") << "quotes go before the cut";
    EXPECT_EQ(strings.Get("A", "None", "default", 4), "def");
    EXPECT_EQ(strings.Get("A", "Long", {}, 1), "");
    EXPECT_EQ(strings.Get("A", "Long", {}, 0), "");
    EXPECT_EQ(strings.Get("A", "Nul"), std::string("a\0b", 3));
}

TEST(ProfileStrings, ChangesOneLineAndLeavesTheRest) {
    struct Change {
        std::string_view name;
        std::string_view before;
        void (*change)(ProfileStrings&);
        std::string_view after;
    };
    const Change changes[] = {
        {"empty file", "", [](ProfileStrings& s) { s.Set("A", "k", "v"); }, "[A]\r\nk=v\r\n"},
        {"in place, spelling kept", "[A]\n; c\n Key\t=\told\nb=2\n",
         [](ProfileStrings& s) { s.Set("a", "KEY", "new"); }, "[A]\n; c\nKey=new\r\nb=2\n"},
        {"the first of equal keys", "[A]\r\nk=1\r\nk=2\r\n", [](ProfileStrings& s) { s.Set("A", "k", "3"); },
         "[A]\r\nk=3\r\nk=2\r\n"},
        {"behind the last key", "[A]\r\na=1\r\n; end\r\n\r\n[B]\r\n", [](ProfileStrings& s) { s.Set("A", "b", "2"); },
         "[A]\r\na=1\r\nb=2\r\n; end\r\n\r\n[B]\r\n"},
        {"behind the header", "x\r\n[A]\r\n; only\r\n", [](ProfileStrings& s) { s.Set("A", "b", "\"2\" "); },
         "x\r\n[A]\r\nb=\"2\" \r\n; only\r\n"},
        {"into the first section", "[A]\r\n[B]\r\n[a]\r\nk=1\r\n", [](ProfileStrings& s) { s.Set("A", "k", "2"); },
         "[A]\r\nk=2\r\n[B]\r\n[a]\r\nk=1\r\n"},
        {"last line completed", "[A]\r\nk=1", [](ProfileStrings& s) { s.Set("A", "l", "2"); }, "[A]\r\nk=1\r\nl=2\r\n"},
        {"comment completed", "; c", [](ProfileStrings& s) { s.Set("A", "k", "1"); }, "; c\r\n[A]\r\nk=1\r\n"},
        {"key removed", "[A]\r\nk=1\r\n;c\r\nl=2\r\n", [](ProfileStrings& s) { s.RemoveKey("A", "K"); },
         "[A]\r\n;c\r\nl=2\r\n"},
        {"last key removed, next goes behind the one before", "[A]\r\nk=1\r\n;c\r\nl=2\r\n",
         [](ProfileStrings& s) {
             s.RemoveKey("A", "l");
             s.Set("A", "m", "3");
         },
         "[A]\r\nk=1\r\nm=3\r\n;c\r\n"},
        {"hidden key uncovered", "[A]\r\nk=1\r\nK=2\r\n",
         [](ProfileStrings& s) {
             s.RemoveKey("A", "k");
             s.Set("A", "k", "3");
         },
         "[A]\r\nK=3\r\n"},
        {"section removed, comments stay", "[A]\r\nk=1\r\n; c\r\nnote\r\n[B]\r\nl=2\r\n",
         [](ProfileStrings& s) { s.RemoveSection("a"); }, "; c\r\nnote\r\n[B]\r\nl=2\r\n"},
        {"second section uncovered", "[A]\r\nk=1\r\n[A]\r\nk=2\r\n",
         [](ProfileStrings& s) {
             s.RemoveSection("A");
             s.Set("A", "k", "3");
         },
         "[A]\r\nk=3\r\n"},
        {"nothing to remove", "[A]\r\nk=1",
         [](ProfileStrings& s) {
             s.RemoveKey("A", "l");
             s.RemoveKey("B", "k");
             s.RemoveSection("B");
         },
         "[A]\r\nk=1"},
        {"line break in a value", "[A]\r\nk=1\r\n",
         [](ProfileStrings& s) {
             s.Set("A", "k", "1\r\n[B]");
             s.Set("B", "l", "2");
         },
         "[A]\r\nk=1\r\n[B]\r\nl=2\r\n"},
        {"lone CR meets LF", "[A]\r\na=1\rk=1\r\n\nz",
         [](ProfileStrings& s) {
             s.RemoveKey("A", "k");
             s.Set("A", "l", "2");
         },
         "[A]\r\na=1\r\nl=2\r\nz"},
        {"mark of UTF-8", "\xC3\xAF\xC2\xBB\xC2\xBF[A]\r\nk=1\r\n", [](ProfileStrings& s) { s.Set("A", "k", "2"); },
         "\xC3\xAF\xC2\xBB\xC2\xBF[A]\r\nk=2\r\n"},
    };
    for (const Change& change : changes) {
        ProfileStrings strings(change.before);
        change.change(strings);
        EXPECT_EQ(strings.Text(), change.after) << change.name;
    }
}

TEST(ProfileStrings, FilesAreReplacedWholeOrNotAtAll) {
    const TemporaryFolder folder;
    FailingFileSystem files;
    const Path path = folder / "InterimCal20120309.DDX";
    ProfileStrings strings = OpenProfileStrings(files, path);
    strings.Set("A", "Unit", "µm");
    SaveProfileStrings(files, path, strings);
    EXPECT_EQ(files.ReadBytes(path, 100), "[A]\r\nUnit=\xB5m\r\n");
    EXPECT_EQ(OpenProfileStrings(files, path).Get("A", "Unit"), "µm");

    strings.Set("A", "Unit", "Ω");
    SaveProfileStrings(files, path, strings);
    EXPECT_EQ(files.ReadBytes(path, 100), "[A]\r\nUnit=\r\n") << "what cannot be stored does not stop the rest";
    strings.Set("A", "Unit", "µm");
    SaveProfileStrings(files, path, strings);
    strings.Set("A", "Unit", "mils");
    files.FailFromWrite(1);
    EXPECT_THROW(SaveProfileStrings(files, path, strings), FileError);
    files.FailFromWrite(0);
    EXPECT_THROW(SaveProfileStrings(files, folder / "missing/a.ini", strings), FileError);
    EXPECT_EQ(OpenProfileStrings(files, path).Get("A", "Unit"), "µm");
    EXPECT_EQ(OpenProfileStrings(files, folder.Folder()).Text(), "");
}

}  // namespace
}  // namespace bellmark
