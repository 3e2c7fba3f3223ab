#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Reads the samples of a drop from text, in the two forms that the simulated board serves.
namespace bellmark {

inline constexpr int mostSamples = 15000;

/// Values of a drop file's header; each is set when its line was found.
struct DropFileHeader {
    std::optional<double> shuntMultiplier;
    std::optional<double> plus1GVoltage;   ///< volts
    std::optional<double> minus1GVoltage;  ///< volts
    int plus1GDecimals = 0;                ///< of the volts in the file
    int minus1GDecimals = 0;
    std::optional<double> burstAverage;
    std::optional<double> burstStdDev;
};

struct DropSamples {
    std::vector<float> volts;
    float lowest = 1e20F;
    float highest = -1e20F;
    DropFileHeader header;
    bool complete = true;  ///< false: there were more samples than a block holds, or a line without a third field
};

/// A flat list of numbers between commas or line ends; empty items are skipped.
DropSamples ReadTemplateFile(std::string_view text);

/// The text file that is written for every drop: header lines, a line that begins with "Sample", then one line per
/// sample with the volts in the third comma-separated field. Reading stops at the first other line.
DropSamples ReadSavedDropFile(std::string_view text);

}  // namespace bellmark
