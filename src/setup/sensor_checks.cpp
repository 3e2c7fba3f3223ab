#include "setup/sensor_checks.h"

#include <algorithm>

#include "platform/numbers.h"
#include "platform/text.h"

namespace bellmark {

std::vector<SensorFault> CheckSensors(std::span<const std::string> serialNumbers, std::span<const double> gains) {
    std::vector<SensorFault> faults(serialNumbers.size());
    for (std::size_t i = 0; i < serialNumbers.size(); ++i) {
        faults[i].sameName = std::count(serialNumbers.begin(), serialNumbers.end(), serialNumbers[i]) > 1;
        faults[i].endsInHyphen = EndsInHyphen(serialNumbers[i]);
        faults[i].zeroGain = i >= gains.size() || gains[i] == 0;
    }
    return faults;
}

bool EndsInHyphen(std::string_view serialNumber) {
    constexpr std::string_view enDash = "\xE2\x80\x93";
    const bool hyphen = !serialNumber.empty() && serialNumber.back() == '-';
    return hyphen ||
           (serialNumber.size() >= enDash.size() && serialNumber.substr(serialNumber.size() - enDash.size()) == enDash);
}

GainFault CheckGain(std::string_view text) {
    const auto gain = NumberIn(text);
    if (!gain) return GainFault::NotANumber;
    return *gain == 0 ? GainFault::Zero : GainFault::None;
}

}  // namespace bellmark
