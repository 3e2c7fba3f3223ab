#include "console/script.h"

#include <utility>

#include "platform/text.h"

namespace bellmark {

namespace {

class LineReader {
  public:
    LineReader(int number, std::string_view rest) : number_(number), rest_(rest) {}

    std::vector<ScriptWord> Words() {
        std::vector<ScriptWord> words;
        for (;;) {
            while (!rest_.empty() && (rest_.front() == ' ' || rest_.front() == '\t')) rest_.remove_prefix(1);
            if (rest_.empty() || rest_.front() == '#') return words;
            words.push_back(rest_.front() == '"' ? QuotedWord() : PlainWord());
        }
    }

  private:
    ScriptWord PlainWord() {
        const auto end = rest_.find_first_of(" \t\"");
        ScriptWord word{std::string(rest_.substr(0, end)), false};
        rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end);
        return word;
    }

    ScriptWord QuotedWord() {
        ScriptWord word{{}, true};
        for (std::size_t i = 1; i < rest_.size(); ++i) {
            if (rest_[i] == '"') {
                rest_.remove_prefix(i + 1);
                return word;
            }
            if (rest_[i] != '\\') {
                word.text += rest_[i];
            } else if (++i < rest_.size()) {
                word.text += Escaped(rest_[i]);
            }
        }
        throw ScriptError(number_, "a quoted text does not end");
    }

    char Escaped(char c) const {
        if (c == 'n') return '\n';
        if (c == '"' || c == '\\') return c;
        throw ScriptError(number_, std::string("\"\\") + c + "\" is not known; there are \\\", \\\\ and \\n");
    }

    int number_;
    std::string_view rest_;
};

/// Each "end" closes the "repeat" above it that is still open.
void RequirePairs(const std::vector<ScriptLine>& lines) {
    std::vector<int> open;
    for (const ScriptLine& line : lines) {
        const ScriptWord& command = line.words.front();
        if (command.text == "repeat") open.push_back(line.number);
        if (command.text != "end") continue;
        if (open.empty()) throw ScriptError(line.number, "there is no repeat that this end closes");
        open.pop_back();
    }
    if (!open.empty()) throw ScriptError(open.back(), "this repeat has no end");
}

}  // namespace

std::vector<ScriptLine> ReadScript(std::string_view text) {
    std::vector<ScriptLine> lines;
    int number = 0;
    std::string heading;
    for (const auto line : SplitLines(text)) {
        ++number;
        try {
            ToWindows1252(line);
        } catch (const EncodingError& error) {
            throw ScriptError(number, error.what());
        }
        auto words = LineReader(number, line).Words();
        if (!words.empty()) {
            lines.push_back({number, std::move(words), std::exchange(heading, {})});
        } else if (const auto comment = Trim(line); !comment.empty()) {
            heading += std::string(heading.empty() ? "" : "\n") + std::string(Trim(comment.substr(1)));
        }
    }
    RequirePairs(lines);
    return lines;
}

}  // namespace bellmark
