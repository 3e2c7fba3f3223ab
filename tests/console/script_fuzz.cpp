#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "console/script.h"
#include "platform/text.h"

// Any text is a script or an error on one of its lines. A script written out again, with the same words quoted, reads
// back to the same words.

namespace {

using namespace bellmark;

void Require(bool holds) {
    if (!holds) std::abort();
}

std::string Quoted(const std::string& text) {
    std::string quoted = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') quoted += '\\';
        quoted += c == '\n' ? std::string("\\n") : std::string(1, c);
    }
    return quoted + '"';
}

void CheckRoundTrip(const std::vector<ScriptLine>& lines) {
    std::string text;
    for (const auto& line : lines) {
        for (const auto& word : line.words) text += (word.quoted ? Quoted(word.text) : word.text) + ' ';
        text += '\n';
    }
    const auto again = ReadScript(text);
    Require(again.size() == lines.size());
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const auto same = [](const ScriptWord& a, const ScriptWord& b) {
            return a.text == b.text && a.quoted == b.quoted;
        };
        Require(std::equal(lines[i].words.begin(), lines[i].words.end(), again[i].words.begin(), again[i].words.end(),
                           same));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const int lineCount = static_cast<int>(SplitLines(text).size());
    try {
        const auto lines = ReadScript(text);
        int last = 0;
        for (const auto& line : lines) {
            Require(!line.words.empty() && line.number > last && line.number <= lineCount);
            last = line.number;
        }
        CheckRoundTrip(lines);
    } catch (const ScriptError& error) {
        Require(error.Line() >= 1 && error.Line() <= lineCount);
    }
    return 0;
}
