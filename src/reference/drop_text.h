#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "run/calibration_run.h"
#include "run/center_config.h"

/// The common parts of the text files of all drops.
namespace bellmark {

/// Adds the line and its ending.
void AddLine(std::string& text, const std::string& line);

/// Owner, FWD, moment and center: the lines below the title.
void AddDropHeading(std::string& text, const CalibrationRun& run, const CenterConfig& center, DateTime now);

/// A column of the table of samples: its first character, counted from 1, its heading, and the decimals of its numbers
/// in exponent form.
struct SampleColumn {
    std::size_t begins;
    std::string_view title;
    int decimals = 0;
};

/// The line above the table. timeBegins and timeTitle: for the time after the number of a sample.
void AddSampleHeading(std::string& text, std::size_t timeBegins, std::string_view timeTitle,
                      std::span<const SampleColumn> columns);

/// The line of a sample: number and time, then the given values in their columns. The first column holds the volts.
void AddSampleRow(std::string& text, std::size_t sample, std::span<const SampleColumn> columns,
                  std::span<const double> values);

}  // namespace bellmark
