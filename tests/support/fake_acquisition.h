#pragma once

#include "app/doors.h"

namespace bellmark {

/// Stands in for all analog input.
struct FakeAcquisition : AcquisitionDoor {
    bool hardware = true;
    float volts = 0;  ///< of every single conversion
    bool unloaded = false;

    std::string FindBoard() override { return hardware ? "KUSB-3100" : "Simulator"; }
    bool HasHardware() const override { return hardware; }
    bool BoardAvailable() override { return true; }
    void InitializeBoard() override {}
    void ShowDAQ(bool) override {}
    float OneConversion(int) override { return volts; }
    int DAQWaitforButton(int) override { return 0; }
    void CaptureBlock(int) override {}
    bool BlockCaptured() override { return true; }
    void GetResultsVolts(std::vector<float>&, int& count) override { count = 0; }
    void AbortAcquisition() override {}
    int CurrentChannelType() const override { return 1; }
    void SetCurrentChannelType(int) override {}
    int TriggerThreshold() const override { return 0; }
    void SetTriggerThreshold(int) override {}
    void Unload() override { unloaded = true; }
};

}  // namespace bellmark
