#include "virtual_fwd/live_signal.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

#include "run/accel_adjustment.h"
#include "virtual_fwd/virtual_center.h"

namespace bellmark::virtual_fwd {

namespace {

constexpr double fullScaleVolts = 10.0;
constexpr double voltsPerCount = 2 * fullScaleVolts / 65536;
constexpr double halfRange = 32768;
constexpr double turningSeconds = 1.5;
constexpr double shakingVolts = 0.05;
constexpr double restlessVolts = 0.008;
constexpr double fastDrift = 0.015;   ///< volts per second
constexpr double longestPulse = 1.5;  ///< seconds from the start to rest, rebounds and vibrations included
constexpr double driftPeriod = 60;    ///< seconds
constexpr double pi = std::numbers::pi;

CenterConfig Today() {
    CenterConfig center = VirtualCenter(false, ZeroDate());
    ComputeAccelAdjustment(center);
    return center;
}

/// A drift that never leaves its bounds, however long the board waits; its steepest slope is given per second.
double Drift(double slope, double seconds) {
    return slope * driftPeriod / (2 * pi) * std::sin(2 * pi * seconds / driftPeriod);
}

}  // namespace

std::uint32_t RawOf(double volts) {
    const double count = std::nearbyint(volts / voltsPerCount);
    return static_cast<std::uint32_t>(std::clamp(count, -halfRange, halfRange - 1) + halfRange);
}

float VoltsOfRaw(std::uint32_t raw) {
    return static_cast<float>((static_cast<double>(raw) - halfRange) * voltsPerCount);
}

LiveSignal::LiveSignal(LiveDrops drops)
    : drops_(std::move(drops)),
      random_(drops_.seed),
      center_(Today()),
      cell_(VirtualLoadCell()),
      voltsUpright_(AccelVoltsFor(center_, 1)),
      voltsUpsideDown_(AccelVoltsFor(center_, -1)) {
    // The shunt switch is read on the same conditioner, so its gain is the nominal one today.
    cell_.conditionerGain = 1;
}

void LiveSignal::TurnAccelerometer(bool upright, double now) {
    if (upright == upright_) return;
    upright_ = upright;
    turnedAt_ = now;
}

void LiveSignal::ConnectLoadCell(std::optional<PulseModel> due, double now) {
    measuresLoad_ = true;
    connectedAt_ = now;
    loadDrop_ = due.value_or(PulseModel{});
    loadDrop_.noisePounds = drops_.noisePounds;
    loadDrop_.startSeconds = drops_.secondsToDrop;
    // Over a long wait, a steady drift would carry the zero away.
    loadDrift_ = std::exchange(loadDrop_.driftPoundsPerSecond, 0);
}

void LiveSignal::ConnectAccelerometer(std::optional<AccelPulseModel> due, double now) {
    measuresLoad_ = false;
    connectedAt_ = now;
    accelDrop_ = due;
    if (!accelDrop_) return;
    accelDrop_->startSeconds = drops_.secondsToDrop;
    if (accelDrop_->spoil == AccelSpoil::Drift) accelDrop_->driftVoltsPerSecond = fastDrift;
}

double LiveSignal::VoltsAt(double seconds) {
    return measuresLoad_ ? LoadVoltsAt(seconds) : AccelVoltsAt(seconds);
}

std::vector<std::uint32_t> LiveSignal::RawSamples(double start, std::size_t count) {
    std::vector<std::uint32_t> raw(count);
    for (std::size_t i = 0; i < count; ++i) raw[i] = RawOf(VoltsAt(start + static_cast<double>(i) / samplesPerSecond));
    return raw;
}

double LiveSignal::LoadVoltsAt(double seconds) {
    if (calSwitch == CalSwitch::Plus) return center_.ReferenceLoadCellPlusVoltage;
    if (calSwitch == CalSwitch::Minus) return center_.ReferenceLoadCellMinusVoltage;
    if (!isBalanced) return center_.ReferenceLoadCellUnbalancedZero;
    const double since = seconds - connectedAt_;
    const double pounds =
        cell_.zeroPounds + ReadingAt(loadDrop_, since, random_) + Drift(loadDrift_, since - loadDrop_.startSeconds);
    return VoltsFor(cell_.coefficients, pounds) * cell_.conditionerGain;
}

double LiveSignal::GravityAt(double seconds) const {
    const double turned = std::clamp((seconds - turnedAt_) / turningSeconds, 0.0, 1.0);
    const double before = std::cos(pi * turned);  // 1 at the old position, -1 at the new one
    return upright_ ? -before : before;
}

double LiveSignal::AccelVoltsAt(double seconds) {
    const double connected = seconds - connectedAt_;
    const double since = accelDrop_ ? connected - accelDrop_->startSeconds : 0;
    const bool restless = accelDrop_ && accelDrop_->spoil == AccelSpoil::Restless && since < -longestPulse;
    const double noise = (restless ? restlessVolts : drops_.accelNoiseVolts) * Gaussian(random_);
    if (seconds - turnedAt_ < turningSeconds)
        return AccelVoltsFor(center_, GravityAt(seconds)) + shakingVolts * Gaussian(random_);
    const double atRest = upright_ ? voltsUpright_ : voltsUpsideDown_;
    if (!accelDrop_) return atRest + noise;
    const bool moves = upright_ && std::abs(since) <= longestPulse;
    const double signal = moves ? AccelVoltsFor(center_, AccelerationAt(*accelDrop_, connected)) : atRest;
    return signal + Drift(accelDrop_->driftVoltsPerSecond, since) + noise;
}

}  // namespace bellmark::virtual_fwd
