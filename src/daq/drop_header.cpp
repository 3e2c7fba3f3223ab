#include "daq/drop_header.h"

#include <algorithm>
#include <cmath>

#include "daq/drop_file_reader.h"
#include "platform/format.h"
#include "platform/numbers.h"
#include "run/accel_adjustment.h"
#include "run/center_config.h"
#include "run/drop_record.h"

namespace bellmark {

namespace {

void TakeRounded(double& inForce, const std::optional<double>& written, int decimals) {
    constexpr int mostDecimals = 12;
    if (!written) return;
    const std::string picture = "0." + std::string(static_cast<std::size_t>(std::min(decimals, mostDecimals)), '0');
    // Volts written as millivolts differ in their last bit.
    constexpr double lastBit = 1e-12;
    const double asWritten = ReadNumber(Format(inForce, picture));
    if (std::abs(asWritten - *written) > lastBit) inForce = *written;
}

}  // namespace

void TakeDropHeader(const DropFileHeader& header, CenterConfig& center, DropRecord& drop) {
    constexpr int shuntDecimals = 3;
    TakeRounded(center.ShuntCalibrationMultiplier, header.shuntMultiplier, shuntDecimals);
    TakeRounded(center.AccelDailyCalibrationPlus1GVoltage, header.plus1GVoltage, header.plus1GDecimals);
    TakeRounded(center.AccelDailyCalibrationMinus1GVoltage, header.minus1GVoltage, header.minus1GDecimals);
    if (header.plus1GVoltage || header.minus1GVoltage) ComputeAccelAdjustment(center);
    if (header.burstAverage) drop.BurstAverage = *header.burstAverage;
    if (header.burstStdDev) drop.BurstStdDev = *header.burstStdDev;
}

}  // namespace bellmark
