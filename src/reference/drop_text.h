#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "run/calibration_run.h"
#include "run/center_config.h"

/// What the text files of all drops have in common.
namespace bellmark {

/// Adds the line and its ending.
void AddLine(std::string& text, const std::string& line);

/// Owner, FWD, moment and center: the lines below the title.
void AddDropHeading(std::string& text, const CalibrationRun& run, const CenterConfig& center, DateTime now);

/// A column of the table of samples: where it begins, counted from 1, what stands above it, and the decimals that its
/// numbers have in exponent form.
struct SampleColumn {
    std::size_t begins;
    std::string_view title;
    int decimals = 0;
};

/// The line above the table. timeBegins and timeTitle: of the time behind the number of a sample.
void AddSampleHeading(std::string& text, std::size_t timeBegins, std::string_view timeTitle,
                      std::span<const SampleColumn> columns);

/// The line of a sample: number and time, then the values in their columns, as many as there are. The first column is
/// that of the volts.
void AddSampleRow(std::string& text, std::size_t sample, std::span<const SampleColumn> columns,
                  std::span<const double> values);

}  // namespace bellmark
