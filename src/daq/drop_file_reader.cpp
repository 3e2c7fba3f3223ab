#include "daq/drop_file_reader.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
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
    constexpr std::array<char, 8> mayRemain{15, 0, 15, 15, 15, 15, 0, 6};
    // Added to a digit's 9 at most, six stays below the bit of 16.
    constexpr std::array<char, 8> six{6, 0, 6, 6, 6, 6, 0, 0};
    constexpr std::array<char, 8> sixteen{16, 0, 16, 16, 16, 16, 0, 0};
    const std::uint64_t left = eightOf(text) ^ eightOf("0.0000E-");
    const bool hasForm = (left & ~eightOf(mayRemain.data())) == 0;
    const bool hasDigits = ((left + eightOf(six.data())) & eightOf(sixteen.data())) == 0;
    return hasForm && hasDigits && (text[7] == '-' || text[7] == '+') && text[8] == '0' && IsDigit(text[9]);
}

/// The value of such a number, ten times faster than the general reading; nothing below 1E-04 and above 9E+04. Five
/// digits times a power of ten down to the eighth never lie so near the middle of two floats that the double in between
/// could change the rounding.
std::optional<float> WrittenNumber(const char* text) {
    static constexpr std::array<double, 9> powers{1, 1e-1, 1e-2, 1e-3, 1e-4, 1e-5, 1e-6, 1e-7, 1e-8};
    if (!IsWrittenNumber(text)) return {};
    const auto digit = [text](std::size_t place) { return text[place] - '0'; };
    const int digits = 10'000 * digit(0) + 1000 * digit(2) + 100 * digit(3) + 10 * digit(4) + digit(5);
    const int places = text[7] == '-' ? 4 + digit(9) : 4 - digit(9);
    if (places < 0 || places > 8) return {};
    return static_cast<float>(digits * powers[static_cast<std::size_t>(places)]);
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

/// The lines of samples as the program writes them: the number of the sample and its time in the first 18 characters,
/// the volts from the 22nd on, each followed by a comma. A line of the load cell has 65 or 66 characters, one of the
/// accelerometer 95 or 96.
constexpr std::size_t timeBegins = 8;
constexpr std::size_t voltsBegin = 21;
constexpr std::size_t shortestWritten = 64;
constexpr std::size_t longestWritten = 96;

/// The place before the time holds one comma, behind the number of the sample.
bool HasOneComma(const char* text) {
    constexpr std::uint64_t ones = 0x0101010101010101;
    constexpr std::uint64_t lowBits = ones * 0x7F;
    std::uint64_t eight = 0;
    std::memcpy(&eight, text, timeBegins);
    const std::uint64_t others = eight ^ (ones * ',');
    const std::uint64_t commas = ~(((others & lowBits) + lowBits) | others | lowBits);
    return commas != 0 && (commas & (commas - 1)) == 0;
}

/// Without a branch, so that the compiler compares many characters at once.
template <std::size_t count>
bool HasControls(const char* text) {
    unsigned char least = ' ';
    for (std::size_t i = 0; i < count; ++i) least = std::min(least, static_cast<unsigned char>(text[i]));
    return least < ' ';
}

/// The end of a line in CR and LF; null when it ends otherwise or has another control character, or a length that the
/// program does not write. line: at least the longest one with its ending.
const char* WrittenLineEnd(const char* line) {
    const auto* lineFeed =
        static_cast<const char*>(std::memchr(line + shortestWritten, '\n', longestWritten - shortestWritten + 2));
    if (!lineFeed || lineFeed[-1] != '\r') return nullptr;
    const char* const end = lineFeed - 1;
    constexpr std::size_t rest = longestWritten - shortestWritten;
    const bool hasControls = HasControls<shortestWritten>(line) || HasControls<rest>(end - rest);
    return hasControls ? nullptr : end;
}

/// The volts of a line that begins as the program writes it. line: at least the shortest one.
std::optional<float> WrittenVolts(const char* line) {
    const char* const afterTime = line + timeBegins + writtenLength;
    const bool beginsAsWritten = HasOneComma(line) && IsWrittenNumber(line + timeBegins) && afterTime[0] == ',' &&
                                 afterTime[1] == ' ' && afterTime[2] == ' ';
    if (!beginsAsWritten) return {};
    const std::size_t sign = line[voltsBegin] == '-' ? 1 : 0;
    const char* const number = line + voltsBegin + sign;
    static constexpr std::array<float, 2> signs{1, -1};
    const auto volts = WrittenNumber(number);
    return volts && number[writtenLength] == ',' ? std::optional(*volts * signs[sign]) : std::nullopt;
}

/// Takes the lines in the form that the program writes from the front of the text, up to one in another form or the
/// last sample of a full block.
void TakeWrittenSamples(std::string_view& text, DropSamples& samples) {
    const char* line = text.data();
    const char* const end = line + text.size();
    float lowest = samples.lowest;
    float highest = samples.highest;
    while (static_cast<std::size_t>(end - line) >= longestWritten + 2 && samples.volts.size() < mostSamples) {
        const auto volts = WrittenVolts(line);
        const char* const lineEnd = volts ? WrittenLineEnd(line) : nullptr;
        if (!lineEnd) break;
        samples.volts.push_back(*volts);
        lowest = std::min(lowest, *volts);
        highest = std::max(highest, *volts);
        line = lineEnd + 2;
    }
    samples.lowest = lowest;
    samples.highest = highest;
    text.remove_prefix(static_cast<std::size_t>(line - text.data()));
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
        if (headerPassed) TakeWrittenSamples(text, samples);
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
