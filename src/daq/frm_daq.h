#pragma once

#include "app/doors.h"
#include "daq/board.h"

namespace bellmark {

class Program;

/// The only way to analog input: passes every call on to the board in use. While saved drops are replayed, captures go
/// to the simulated board even when hardware is present.
class frmDAQ : public AcquisitionDoor {
  public:
    /// hardware: nullptr for a build or machine without a hardware board.
    frmDAQ(const Program& program, Board& simulator, Board* hardware);

    std::string FindBoard() override;
    bool HasHardware() const override { return current_ == hardware_ && hardware_; }
    bool IsDemonstration() const override { return current_->IsDemonstration(); }
    std::string WhyNoBoard() const override { return whyNoBoard_; }
    std::string CaptureProblem() const override { return Capturing().Problem(); }
    bool BoardAvailable() override { return current_->BoardAvailable(); }
    void InitializeBoard() override { current_->InitializeBoard(); }
    void ShowDAQ(bool visible) override;
    float OneConversion(int channel) override { return current_->OneConversion(channel); }
    int DAQWaitforButton(int channel) override { return current_->WaitforButton(channel); }
    void CaptureBlock(int channel) override { Capturing().CaptureBlock(channel); }
    bool BlockCaptured() override { return Capturing().BlockCaptured(); }
    void GetResultsVolts(std::vector<float>& volts, int& count) override { Capturing().GetResultsVolts(volts, count); }
    void AbortAcquisition() override { Capturing().StopAcq(); }
    int CurrentChannelType() const override { return current_->CurrentChannelType; }
    void SetCurrentChannelType(int type) override { current_->CurrentChannelType = type; }
    int TriggerThreshold() const override { return current_->TriggerThreshold; }
    void SetTriggerThreshold(int threshold) override { current_->TriggerThreshold = threshold; }
    void Unload() override;

  private:
    Board& Capturing() const;

    const Program& program_;
    Board& simulator_;
    Board* hardware_;
    Board* current_;
    std::string whyNoBoard_;  ///< of the hardware that was found and cannot be used
};

}  // namespace bellmark
