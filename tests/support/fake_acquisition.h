#pragma once

#include <algorithm>

#include "app/doors.h"

namespace bellmark {

/// Stands in for all analog input.
struct FakeAcquisition : AcquisitionDoor {
    bool hardware = true;
    float volts = 0;           ///< of every single conversion
    std::vector<float> block;  ///< what a capture delivers
    bool captured = true;      ///< the block is there as soon as it is asked for
    int aborts = 0;
    int conversions = 0;
    bool unloaded = false;

    std::string FindBoard() override { return hardware ? "KUSB-3100" : "Simulator"; }
    bool HasHardware() const override { return hardware; }
    bool BoardAvailable() override { return true; }
    void InitializeBoard() override {}
    void ShowDAQ(bool) override {}
    float OneConversion(int) override {
        ++conversions;
        return volts;
    }
    int DAQWaitforButton(int) override { return 0; }
    void CaptureBlock(int) override {}
    bool BlockCaptured() override { return captured; }
    void GetResultsVolts(std::vector<float>& samples, int& count) override {
        std::copy(block.begin(), block.end(), samples.begin());
        count = static_cast<int>(block.size());
    }
    void AbortAcquisition() override { ++aborts; }
    int CurrentChannelType() const override { return 1; }
    void SetCurrentChannelType(int) override {}
    int TriggerThreshold() const override { return 0; }
    void SetTriggerThreshold(int) override {}
    void Unload() override { unloaded = true; }
};

}  // namespace bellmark
