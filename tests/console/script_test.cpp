#include "console/script.h"

#include <gtest/gtest.h>

#include "platform/numbers.h"

namespace bellmark {
namespace {

/// "2: click |frmAbout.cmdQuit|", with bars around quoted words and "/" between lines.
std::string Described(std::string_view text) {
    std::string described;
    try {
        for (const auto& line : ReadScript(text)) {
            if (!described.empty()) described += '/';
            described += NumberText(line.number) + ':';
            for (const auto& word : line.words) described += ' ' + (word.quoted ? '|' + word.text + '|' : word.text);
        }
    } catch (const ScriptError& error) {
        return "line " + NumberText(error.Line()) + ": " + error.what();
    }
    return described;
}

TEST(Script, IsReadLineByLine) {
    const struct {
        const char* text;
        const char* read;
    } cases[] = {
        {"", ""},
        {"\n  \n\t# only a comment\n", ""},
        {"click a.b\r\n\r\n  show\ta.b # why\r\nquit", "1: click a.b/3: show a.b/4: quit"},
        {"set a.b \"two words\"", "1: set a.b |two words|"},
        {"set a.b \"# no comment\"", "1: set a.b |# no comment|"},
        {"set a.b \"\"", "1: set a.b ||"},
        {"set a.b \"say \\\"x\\\" \\\\ \\n\"", "1: set a.b |say \"x\" \\ \n|"},
        {"set a.b\"text\"more", "1: set a.b |text| more"},
        {"set a.lblZeroCalc(0) 5#6", "1: set a.lblZeroCalc(0) 5#6"},
        {"front\rfront\nfront", "1: front/2: front/3: front"},
        {"front\nset a \"open", "line 2: a quoted text does not end"},
        {"set a \"open\\", "line 1: a quoted text does not end"},
        {"set a \"\\t\"", "line 1: \"\\t\" is not known; there are \\\", \\\\ and \\n"},
        {"front\n\xff", "line 2: The text is not valid UTF-8"},
        {"set a \"\xE2\x84\xA6\"",
         "line 1: The character \"\xE2\x84\xA6\" (U+2126) cannot be stored: the files' code page, Windows-1252, lacks "
         "it"},
    };
    for (const auto& test : cases) EXPECT_EQ(Described(test.text), test.read) << test.text;
}

}  // namespace
}  // namespace bellmark
