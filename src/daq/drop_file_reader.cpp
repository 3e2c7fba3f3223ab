#include "daq/drop_file_reader.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>

#include "platform/format.h"
#include "platform/numbers.h"
#include "platform/text.h"

namespace bellmark {

namespace {

constexpr std::string_view sampleHeading = "Sample";

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

/// "1.2345E-01": the form in which the program writes the times and volts of samples.
constexpr std::size_t writtenLength = 10;
bool IsWrittenNumber(const char* text) {
    const auto eightOf = [](const char* from) {
        std::uint64_t eight = 0;
        std::memcpy(&eight, from, sizeof(eight));
        return eight;
    };
    // What remains of each of the first eight characters: at most 9 for a digit, 0 or 6 for a sign, 0 for the others.
    const std::uint64_t left = eightOf(text) ^ eightOf("0.0000E-");
    const bool hasForm = (left & ~eightOf("\x0F\0\x0F\x0F\x0F\x0F\0\x06")) == 0;
    const bool hasDigits = ((left + eightOf("\6\0\6\6\6\6\0\0")) & eightOf("\x10\0\x10\x10\x10\x10\0\0")) == 0;
    return hasForm && hasDigits && (text[7] == '-' || text[7] == '+') && text[8] == '0' && IsDigit(text[9]);
}

/// The value of such a number, ten times faster than the general reading; nothing below 1E-04 and above 9E+04. Five
/// digits over a power of ten up to the eighth never lie so near the middle of two floats that the double in between
/// could change the rounding.
std::optional<float> WrittenNumber(const char* text) {
    constexpr std::array<double, 9> powers{1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8};
    if (!IsWrittenNumber(text)) return {};
    const auto digit = [text](std::size_t place) { return text[place] - '0'; };
    const int digits = 10'000 * digit(0) + 1000 * digit(2) + 100 * digit(3) + 10 * digit(4) + digit(5);
    const int places = text[7] == '-' ? 4 + digit(9) : 4 - digit(9);
    if (places < 0 || places > 8) return {};
    return static_cast<float>(digits / powers[static_cast<std::size_t>(places)]);
}

/// Reads the plain form of both writers quickly, and everything else by the general rules.
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

/// Older files give the daily readings in millivolts. The two lines have different rules to recognise them.
double PlusVolts(std::string_view line) {
    const double value = ValueOf(line);
    return (Holds(line, "mV") || Holds(line, "mv")) && value >= 10 ? value / 1000 : value;
}

double MinusVolts(std::string_view line) {
    const double value = ValueOf(line);
    return Holds(line, "mV") || (Holds(line, "mv") && value < -10) ? value / 1000 : value;
}

/// Decimals of the line's number in volts. inMillivolts: the number was divided by 1000.
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
    // A quick way out for the thousands of sample lines, none of which begins with a letter.
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

/// Removes the first line of the text and returns its volts when the line has the form that the program writes: number
/// and time of the sample and the volts, each followed by a comma, and more after them. Otherwise returns nothing and
/// leaves the line.
std::optional<float> TakeWrittenSample(std::string_view& text) {
    constexpr std::size_t shortest = 80;  // up to here nothing beyond the text is read
    if (text.size() < shortest) return {};
    const char* at = text.data();
    constexpr std::size_t mostDigits = 5;
    const auto passBlanks = [&at] {
        const char* const last = at + 12;
        while (*at == ' ' && at < last) ++at;
    };
    const char* const number = at;
    while (IsDigit(*at) && at < number + mostDigits) ++at;
    if (*at++ != ',') return {};
    passBlanks();
    if (!IsWrittenNumber(at) || at[writtenLength] != ',') return {};
    at += writtenLength + 1;
    passBlanks();
    const bool isNegative = *at == '-';
    if (isNegative) ++at;
    const auto volts = WrittenNumber(at);
    if (!volts || at[writtenLength] != ',') return {};
    at += writtenLength + 1;
    const std::size_t rest = text.size() - static_cast<std::size_t>(at - text.data());
    const auto* end = static_cast<const char*>(std::memchr(at, '\n', rest));
    if (!end || std::memchr(at, '\r', static_cast<std::size_t>(end - at)) != end - 1) return {};
    text.remove_prefix(static_cast<std::size_t>(end + 1 - text.data()));
    return isNegative ? -*volts : *volts;
}

/// The third comma-separated field; nothing when there are fewer.
std::optional<std::string_view> ThirdField(std::string_view line) {
    const auto first = line.find(',');
    if (first == std::string_view::npos) return {};
    const auto second = line.find(',', first + 1);
    if (second == std::string_view::npos) return {};
    return line.substr(second + 1, line.find(',', second + 1) - second - 1);
}

/// Removes one line and its line ends from the front of the text. Two searches for one character each are several times
/// faster than one for both.
std::string_view TakeLine(std::string_view& text) {
    auto line = text.substr(0, text.find('\n'));
    line = line.substr(0, line.find('\r'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    if (!text.empty() && text.front() == '\n') text.remove_prefix(1);
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
        if (headerPassed) {
            if (const auto volts = TakeWrittenSample(text)) {
                if (Append(samples, *volts)) continue;
                samples.complete = false;
                break;
            }
        }
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
