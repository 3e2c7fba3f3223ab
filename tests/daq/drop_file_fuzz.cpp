#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "daq/drop_file_reader.h"
#include "platform/text.h"
#include "reference/drop_file.h"

// Any text is read in both forms. Then the same bytes are taken as volts, written as a drop's file and read back.

namespace {

using namespace bellmark;

void Require(bool holds) {
    if (!holds) std::abort();
}

void CheckSamples(const DropSamples& read) {
    Require(read.volts.size() <= static_cast<std::size_t>(mostSamples));
    for (const float volts : read.volts) Require(std::isfinite(volts));
    if (read.volts.empty()) return;
    const auto [least, most] = std::minmax_element(read.volts.begin(), read.volts.end());
    // The chart's range starts from these two values, beyond the volts of any board.
    Require(read.lowest == std::min(*least, 1e20F) && read.highest == std::max(*most, -1e20F));
}

void CheckRoundTrip(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t mostVolts = 200;
    DropRecord drop;
    for (std::size_t i = 0; i + sizeof(std::int16_t) <= size && i / 2 < mostVolts; i += sizeof(std::int16_t)) {
        std::int16_t counts = 0;
        std::memcpy(&counts, data + i, sizeof(counts));
        drop.RawVolts[static_cast<std::size_t>(drop.NumSamples++)] = static_cast<float>(counts) * 20 / 65536;
    }
    CenterConfig center;
    center.ShuntCalibrationMultiplier = 1 + 0.001 * static_cast<double>(size % 50);
    const DropSamples read = ReadSavedDropFile(LoadDropFileText(drop, CalibrationRun(), center, DateTime{}));
    Require(read.complete && read.volts.size() == static_cast<std::size_t>(drop.NumSamples));
    Require(std::abs(read.header.shuntMultiplier.value_or(0) - center.ShuntCalibrationMultiplier) < 1e-12);
    for (std::size_t i = 0; i < read.volts.size(); ++i) {
        // Five digits are written.
        Require(std::abs(read.volts[i] - drop.RawVolts[i]) <= 5.001e-5F * std::abs(drop.RawVolts[i]));
    }
}

/// A blank before each line changes nothing, but avoids the quick way for the lines that the program writes.
void CheckQuickWay(std::string_view text) {
    std::string slow;
    for (const std::string_view line : SplitLines(text)) (slow += ' ').append(line) += "\r\n";
    std::string quick;
    for (const std::string_view line : SplitLines(text)) quick.append(line) += "\r\n";
    const DropSamples a = ReadSavedDropFile(quick);
    const DropSamples b = ReadSavedDropFile(slow);
    Require(a.volts == b.volts && a.complete == b.complete && a.lowest == b.lowest && a.highest == b.highest);
}

/// Single bytes of lines that the program writes are replaced: place, byte, place, byte ...
void CheckDamagedLines(const std::uint8_t* data, std::size_t size) {
    DropRecord drop;
    drop.NumSamples = 5;
    for (std::size_t i = 0; i < 5; ++i) drop.RawVolts[i] = static_cast<float>(size % 7) - static_cast<float>(i);
    std::string text = LoadDropFileText(drop, CalibrationRun(), CenterConfig(), DateTime{});
    text.erase(0, text.find("Sample,"));
    for (std::size_t i = 0; i + 1 < size && i < 8; i += 2) text[data[i] % text.size()] = static_cast<char>(data[i + 1]);
    CheckQuickWay(text);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    CheckSamples(ReadTemplateFile(text));
    CheckSamples(ReadSavedDropFile(text));
    CheckQuickWay(text);
    CheckDamagedLines(data, size);
    CheckRoundTrip(data, size);
    return 0;
}
