#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "virtual_fwd/accel_pulse.h"
#include "virtual_fwd/drop_number.h"
#include "virtual_fwd/load_pulse.h"

/// The drops of the live demonstration board: the same ones that the FWD's files were written for.
namespace bellmark::virtual_fwd {

/// The file that switches the demonstration board on when it is in the program folder.
inline constexpr const char* liveDropsName = "DemonstrationBoard.ini";

struct LiveDrops {
    std::uint64_t seed = 2012;        ///< of the board's noise
    double secondsToDrop = 4;         ///< from arming to the pulse
    double noisePounds = 6;           ///< of the load cell at rest: standard deviation
    double accelNoiseVolts = 0.0008;  ///< of the accelerometer at rest
    std::map<DropNumber, PulseModel> loadCell;
    std::map<DropNumber, AccelPulseModel> accelerometer;
};

/// Content of the file, a profile with one key per drop.
std::string LiveDropsText(const LiveDrops& drops);

/// Nothing when the text is not such a profile. A drop whose values cannot be read is left out.
std::optional<LiveDrops> LiveDropsIn(std::string_view text);

/// The drop that is due. A trial that was not prepared repeats the prepared ones in turn, a drop that was not prepared
/// the first one of its height. Nothing when there is none of that height.
template <class Pulse>
std::optional<Pulse> DueDrop(const std::map<DropNumber, Pulse>& drops, DropNumber number) {
    if (drops.empty()) return {};
    const int trials = drops.rbegin()->first.trial;
    number.trial = (number.trial - 1) % trials + 1;
    const auto exact = drops.find(number);
    if (exact != drops.end()) return exact->second;
    const auto first = drops.find({number.trial, number.height, 1});
    return first == drops.end() ? std::nullopt : std::optional(first->second);
}

}  // namespace bellmark::virtual_fwd
