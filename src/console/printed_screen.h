#pragma once

#include <string>
#include <vector>

namespace bellmark {

class Screen;

/// A screen on paper where nothing is drawn: its name, the titles of its plots and the texts of its text boxes, one per
/// line.
std::vector<std::string> PrintedLines(const Screen& screen);

}  // namespace bellmark
