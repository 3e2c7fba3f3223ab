#include "daq/drop_file_reader.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "platform/format.h"
#include "platform/numbers.h"
#include "platform/text.h"

namespace bellmark {

namespace {

constexpr std::string_view sampleHeading = "Sample";

/// The plain form that both writers use, quickly; everything else by the rules for any number.
float ReadVolts(std::string_view text) {
    text = Trim(text);
    float value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool isPlain = error == std::errc() && end == text.data() + text.size() && std::isfinite(value);
    if (isPlain) return value;
    constexpr double largest = std::numeric_limits<float>::max();
    return static_cast<float>(std::clamp(ReadNumber(text), -largest, largest));
}

/// False when the block is full.
bool Append(DropSamples& samples, float volts) {
    if (samples.volts.size() == mostSamples) return false;
    samples.volts.push_back(volts);
    samples.lowest = std::min(samples.lowest, volts);
    samples.highest = std::max(samples.highest, volts);
    return true;
}

double ValueOf(std::string_view line) {
    const auto equal = line.find('=');
    return equal == std::string_view::npos ? 0 : ReadNumber(line.substr(equal + 1));
}

bool Holds(std::string_view line, std::string_view part) {
    return line.find(part) != std::string_view::npos;
}

/// Older files give the daily readings in millivolts. The two lines tell them apart by different rules.
double PlusVolts(std::string_view line) {
    const double value = ValueOf(line);
    return (Holds(line, "mV") || Holds(line, "mv")) && value >= 10 ? value / 1000 : value;
}

double MinusVolts(std::string_view line) {
    const double value = ValueOf(line);
    return Holds(line, "mV") || (Holds(line, "mv") && value < -10) ? value / 1000 : value;
}

/// Decimals of the line's number in volts. inMillivolts: the number was divided by a thousand.
int DecimalsOfVolts(std::string_view line, bool inMillivolts) {
    constexpr std::string_view digits = "0123456789";
    const auto point = line.find('.', std::min(line.find('='), line.size()));
    std::size_t decimals = 0;
    if (point != std::string_view::npos) {
        const auto end = std::min(line.find_first_not_of(digits, point + 1), line.size());
        decimals = end - point - 1;
    }
    return static_cast<int>(decimals) + (inMillivolts ? 3 : 0);
}

double SixPlaces(double value) {
    return ReadNumber(Format(value, "0.000000"));
}

void ReadHeaderLine(DropFileHeader& header, std::string_view line) {
    // Thousands of sample lines come this way: none begins with a letter.
    if (line.front() != 'D' && line.front() != 'I') return;
    if (StartsWith(line, "Daily Shunt")) header.shuntMultiplier = ValueOf(line);
    if (StartsWith(line, "Daily +G")) {
        header.plus1GVoltage = PlusVolts(line);
        header.plus1GDecimals = DecimalsOfVolts(line, *header.plus1GVoltage != ValueOf(line));
    }
    if (StartsWith(line, "Daily -G")) {
        header.minus1GVoltage = MinusVolts(line);
        header.minus1GDecimals = DecimalsOfVolts(line, *header.minus1GVoltage != ValueOf(line));
    }
    if (StartsWith(line, "Initial Burst Ave")) header.burstAverage = SixPlaces(ValueOf(line));
    if (StartsWith(line, "Initial Burst Std")) header.burstStdDev = SixPlaces(ValueOf(line));
}

/// The third comma-separated field; nothing when there are fewer.
std::optional<std::string_view> ThirdField(std::string_view line) {
    const auto first = line.find(',');
    if (first == std::string_view::npos) return {};
    const auto second = line.find(',', first + 1);
    if (second == std::string_view::npos) return {};
    return line.substr(second + 1, line.find(',', second + 1) - second - 1);
}

/// Takes one line off the front of the text. Two searches for one character each are several times faster than one for
/// both.
std::string_view TakeLine(std::string_view& text) {
    auto line = text.substr(0, text.find('\n'));
    line = line.substr(0, line.find('\r'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    return line;
}

}  // namespace

DropSamples ReadTemplateFile(std::string_view text) {
    DropSamples samples;
    samples.volts.reserve(mostSamples);
    const auto isSeparator = [](char c) { return c == ',' || c == '\r' || c == '\n'; };
    while (!text.empty()) {
        const auto length =
            static_cast<std::size_t>(std::find_if(text.begin(), text.end(), isSeparator) - text.begin());
        const auto item = Trim(text.substr(0, length));
        text.remove_prefix(std::min(length + 1, text.size()));
        if (item.empty()) continue;
        if (!Append(samples, ReadVolts(item))) {
            samples.complete = false;
            break;
        }
    }
    return samples;
}

DropSamples ReadSavedDropFile(std::string_view text) {
    DropSamples samples;
    samples.volts.reserve(mostSamples);
    bool headerPassed = false;
    while (!text.empty()) {
        const auto line = Trim(TakeLine(text));
        if (line.empty()) continue;
        ReadHeaderLine(samples.header, line);
        if (headerPassed) {
            const auto volts = ThirdField(line);
            if (!volts || !Append(samples, ReadVolts(*volts))) {
                samples.complete = false;
                break;
            }
        }
        if (StartsWith(line, sampleHeading)) headerPassed = true;
    }
    return samples;
}

}  // namespace bellmark
