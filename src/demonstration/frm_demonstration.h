#pragma once

#include <chrono>
#include <memory>

#include "controls/controls.h"
#include "controls/screen.h"
#include "daq/queued_device.h"
#include "virtual_fwd/live_signal.h"

namespace bellmark {

class Program;

/// The live demonstration board, for practice without hardware: it streams the signal of the imaginary center as time
/// goes on, and its screen is what an operator's hands would do. The temperature sensor is on channel 0, the hand
/// button on the button's channel, the signal conditioner on all others. The conditioner is connected to the instrument
/// of the procedure in hand.
class frmDemonstration : public Screen, public QueuedDevice {
  public:
    frmDemonstration(Program& program, virtual_fwd::LiveDrops drops);

    Label lblDrop{*this, "lblDrop"};  ///< what the board is about to do
    Button cmdHandButton{*this, "cmdHandButton", "Hand Button"};
    CheckBox chkHoldButton{*this, "chkHoldButton", "Hold it down"};
    Frame fraConditioner{*this, "fraConditioner", "Signal Conditioner"};
    CheckBox chkAutoBalance{fraConditioner, "chkAutoBalance", "Auto Balance"};
    OptionButton optCalOff{fraConditioner, "optCalOff", "cal", "CAL off"};
    OptionButton optCalPlus{fraConditioner, "optCalPlus", "cal", "CAL +"};
    OptionButton optCalMinus{fraConditioner, "optCalMinus", "cal", "CAL -"};
    Frame fraAccelerometer{*this, "fraAccelerometer", "Accelerometer"};
    OptionButton optUpright{fraAccelerometer, "optUpright", "position", "Upright"};
    OptionButton optUpsideDown{fraAccelerometer, "optUpsideDown", "position", "Upside down"};
    CheckBox chkCable{*this, "chkCable", "Board is plugged in"};
    Timer tmrButton{*this, "tmrButton", std::chrono::milliseconds(200)};

    bool IsAlwaysAtHand() const override { return true; }

    std::vector<std::string> Boards() override { return {"Demonstration board"}; }
    bool IsDemonstration() const override { return true; }
    void Select(const std::string&) override {}
    void Release() override { Stop(); }
    int ResolutionBits() const override { return 16; }
    RawSample SingleValue(int channel) override;
    float VoltsOf(RawSample raw) const override { return virtual_fwd::VoltsOfRaw(raw); }
    void StartContinuous(int channel, int samplesPerSecond) override;
    void Serve() override;
    void Stop() override;

  private:
    std::chrono::milliseconds Now() const;
    double Seconds() const;
    double VoltsOn(int channel);
    void ConnectInstrument(bool forFlow);
    void RequireCable() const;
    void ShowDrop(bool isDue);

    Program& program_;
    virtual_fwd::LiveSignal signal_;
    bool buttonIsPressed_ = false;
    bool flows_ = false;
    std::chrono::milliseconds flowStart_{};
    std::size_t produced_ = 0;  ///< samples since the flow started
};

/// The demonstration board of a program folder that has its file; nothing without it. A file that cannot be read throws
/// FileError.
std::unique_ptr<AcquisitionDevice> MakeDemonstrationBoard(Program& program);

}  // namespace bellmark
