#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Faults of the FWD's sensors and load cell in the set-up.
namespace bellmark {

struct SensorFault {
    bool sameName = false;  ///< another sensor has the same serial number; two empty ones are the same
    bool endsInHyphen = false;
    bool zeroGain = false;
    bool Any() const { return sameName || endsInHyphen || zeroGain; }
};

/// One entry per sensor.
std::vector<SensorFault> CheckSensors(std::span<const std::string> serialNumbers, std::span<const double> gains);

/// A hyphen or an en dash as its last character.
bool EndsInHyphen(std::string_view serialNumber);

enum class GainFault { None, Zero, NotANumber };
GainFault CheckGain(std::string_view text);

}  // namespace bellmark
