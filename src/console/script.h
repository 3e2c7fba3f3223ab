#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

/// The text of a script: one command per line, "#" starts a comment, texts are in double quotes with \", \\ and \n.
namespace bellmark {

struct ScriptWord {
    std::string text;
    bool quoted = false;
};

struct ScriptLine {
    int number = 0;                 ///< from 1
    std::vector<ScriptWord> words;  ///< never empty
    std::string heading;            ///< the comment on the lines above it
};

/// A line that is wrong or whose check failed: its number and the reason.
class ScriptError : public std::runtime_error {
  public:
    ScriptError(int line, const std::string& why) : std::runtime_error(why), line_(line) {}
    int Line() const { return line_; }

  private:
    int line_;
};

/// Lines with at least one word. Throws ScriptError for a quote that is never closed, an unknown escape, a repeat
/// without its end or an end without its repeat, and text that is not UTF-8.
std::vector<ScriptLine> ReadScript(std::string_view text);

}  // namespace bellmark
