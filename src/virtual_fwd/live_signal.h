#pragma once

#include <optional>
#include <vector>

#include "platform/machine.h"
#include "run/center_config.h"
#include "virtual_fwd/live_drops.h"

namespace bellmark::virtual_fwd {

/// Position of the signal conditioner's CAL switch.
enum class CalSwitch { Off, Plus, Minus };

/// The output of the imaginary center's signal conditioner as time goes on: noise, and the pulse of the drop that is
/// due. Times are seconds of the board's own clock.
class LiveSignal {
  public:
    explicit LiveSignal(LiveDrops drops);

    const LiveDrops& Drops() const { return drops_; }

    CalSwitch calSwitch = CalSwitch::Off;
    bool isBalanced = false;  ///< the bridge of the load cell

    /// Turns the accelerometer by hand, which takes a moment.
    void TurnAccelerometer(bool upright, double now);

    /// Connects the load cell. Its drop, if one is due, comes secondsToDrop after now.
    void ConnectLoadCell(std::optional<PulseModel> due, double now);
    void ConnectAccelerometer(std::optional<AccelPulseModel> due, double now);

    /// One sample.
    double VoltsAt(double seconds);

    /// The board's raw values of a number of samples at 15000 samples per second, the first of them at start: unsigned,
    /// 16 bits over ±10 V.
    std::vector<std::uint32_t> RawSamples(double start, std::size_t count);

  private:
    double LoadVoltsAt(double seconds);
    double AccelVoltsAt(double seconds);
    double GravityAt(double seconds) const;

    LiveDrops drops_;
    Random random_;
    CenterConfig center_;
    LoadCellModel cell_;
    double voltsUpright_;
    double voltsUpsideDown_;
    bool measuresLoad_ = false;
    double connectedAt_ = 0;  ///< pulses are computed from here: long after the start, seconds lose their last digits
    PulseModel loadDrop_;     ///< without a pulse while no drop is due
    double loadDrift_ = 0;    ///< the steepest, pounds per second
    std::optional<AccelPulseModel> accelDrop_;
    bool upright_ = true;
    double turnedAt_ = -1e9;
};

/// The raw value of a voltage, and its volts: 16 bits over ±10 V.
std::uint32_t RawOf(double volts);
float VoltsOfRaw(std::uint32_t raw);

}  // namespace bellmark::virtual_fwd
