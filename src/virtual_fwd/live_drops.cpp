#include "virtual_fwd/live_drops.h"

#include <array>
#include <vector>

#include "platform/numbers.h"
#include "platform/profile_strings.h"
#include "platform/text.h"

namespace bellmark::virtual_fwd {

namespace {

constexpr const char* boardSection = "Demonstration Board";
constexpr const char* loadSection = "Load Cell Drops";
constexpr const char* accelSection = "Accelerometer Drops";
constexpr int mostTrials = 4;
constexpr int mostHeights = 4;
constexpr int mostDrops = 10;
constexpr std::size_t valuesPerDrop = 5;

std::string Joined(const std::array<double, valuesPerDrop>& values) {
    std::string text;
    for (const double value : values) text += (text.empty() ? "" : ",") + NumberText(value);
    return text;
}

std::optional<std::array<double, valuesPerDrop>> ValuesIn(const std::string& text) {
    const std::vector<std::string> parts = Split(text, ',');
    if (parts.size() != valuesPerDrop) return {};
    std::array<double, valuesPerDrop> values{};
    for (std::size_t i = 0; i < valuesPerDrop; ++i) {
        const auto value = NumberIn(parts[i]);
        if (!value) return {};
        values[i] = *value;
    }
    return values;
}

/// All drops of a section, each made of its values.
template <class Pulse, class Make>
std::map<DropNumber, Pulse> DropsIn(const ProfileStrings& strings, const char* section, const Make& make) {
    std::map<DropNumber, Pulse> drops;
    for (int trial = 1; trial <= mostTrials; ++trial) {
        for (int height = 1; height <= mostHeights; ++height) {
            for (int drop = 1; drop <= mostDrops; ++drop) {
                const DropNumber number{trial, height, drop};
                const auto values = ValuesIn(strings.Get(section, DropNumberText(number)));
                if (values) drops[number] = make(*values);
            }
        }
    }
    return drops;
}

double NumberOr(const ProfileStrings& strings, const char* key, double otherwise) {
    return NumberIn(strings.Get(boardSection, key)).value_or(otherwise);
}

}  // namespace

std::string LiveDropsText(const LiveDrops& drops) {
    ProfileStrings strings;
    strings.Set(boardSection, "Seed", NumberText(static_cast<long long>(drops.seed)));
    strings.Set(boardSection, "SecondsToDrop", NumberText(drops.secondsToDrop));
    strings.Set(boardSection, "NoisePounds", NumberText(drops.noisePounds));
    strings.Set(boardSection, "AccelNoiseVolts", NumberText(drops.accelNoiseVolts));
    for (const auto& [number, pulse] : drops.loadCell) {
        strings.Set(loadSection, DropNumberText(number),
                    Joined({pulse.peakPounds, pulse.widthSeconds, pulse.driftPoundsPerSecond, pulse.humPounds,
                            static_cast<double>(pulse.spoil)}));
    }
    for (const auto& [number, pulse] : drops.accelerometer) {
        strings.Set(accelSection, DropNumberText(number),
                    Joined({pulse.peakMicrons, pulse.widthSeconds, pulse.driftVoltsPerSecond, pulse.triggerLevel,
                            static_cast<double>(pulse.spoil)}));
    }
    return strings.Text();
}

std::optional<LiveDrops> LiveDropsIn(std::string_view text) {
    const ProfileStrings strings(text);
    if (!strings.HasSection(boardSection)) return {};
    LiveDrops drops;
    drops.seed = static_cast<std::uint64_t>(NumberOr(strings, "Seed", static_cast<double>(drops.seed)));
    drops.secondsToDrop = NumberOr(strings, "SecondsToDrop", drops.secondsToDrop);
    drops.noisePounds = NumberOr(strings, "NoisePounds", drops.noisePounds);
    drops.accelNoiseVolts = NumberOr(strings, "AccelNoiseVolts", drops.accelNoiseVolts);
    drops.loadCell = DropsIn<PulseModel>(strings, loadSection, [](const auto& values) {
        PulseModel pulse;
        pulse.peakPounds = values[0];
        pulse.widthSeconds = values[1];
        pulse.driftPoundsPerSecond = values[2];
        pulse.humPounds = values[3];
        pulse.spoil = static_cast<Spoil>(static_cast<int>(values[4]));
        return pulse;
    });
    drops.accelerometer = DropsIn<AccelPulseModel>(strings, accelSection, [](const auto& values) {
        AccelPulseModel pulse;
        pulse.peakMicrons = values[0];
        pulse.widthSeconds = values[1];
        pulse.driftVoltsPerSecond = values[2];
        pulse.triggerLevel = values[3];
        pulse.spoil = static_cast<AccelSpoil>(static_cast<int>(values[4]));
        return pulse;
    });
    return drops;
}

}  // namespace bellmark::virtual_fwd
