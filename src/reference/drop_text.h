#pragma once

#include <string>
#include <vector>

#include "run/calibration_run.h"
#include "run/center_config.h"

/// What the text files of all drops have in common.
namespace bellmark {

/// Fills a line up to a column, counted from 1 in characters, as a tab stop does. A line that is there already stays.
class TabbedLine {
  public:
    /// The line begins at the end of the text.
    explicit TabbedLine(std::string& text) : text_(text), start_(text.size()) {}
    void TabTo(std::size_t column);

  private:
    std::string& text_;
    std::size_t start_;
};

/// Adds the line and its ending.
void AddLine(std::string& text, const std::string& line);

/// Owner, FWD, moment and center: the lines below the title.
void AddDropHeading(std::string& text, const CalibrationRun& run, const CenterConfig& center, DateTime now);

/// Number and time of each sample, which are the same in every file: "1,      0.0000E+00,  ".
const std::vector<std::string>& SampleBeginnings();

}  // namespace bellmark
