#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/doors.h"
#include "controls/controls.h"
#include "controls/picture.h"
#include "controls/screen.h"
#include "daq/acquisition_device.h"
#include "daq/board.h"
#include "daq/capture_ring.h"

namespace bellmark {

class Program;

/// A hardware board: runs the device behind it, and shows what it does. Its screen can be looked at beside any other.
class frmKUSB : public Screen, public BoardDoor, public Board {
  public:
    frmKUSB(Program& program, std::unique_ptr<AcquisitionDevice> device);
    ~frmKUSB() override;

    Label lblBoard{*this, "lblBoard"};  ///< name and resolution
    Picture dtpGraph{*this, "dtpGraph"};
    Picture dtpResults{*this, "dtpResults"};
    TextBox txtLog{*this, "txtLog"};
    Label lblQueReady{*this, "lblQueReady"};
    Label lblQueInprocess{*this, "lblQueInprocess"};
    Label lblQueDone{*this, "lblQueDone"};
    Label lblQueDone2{*this, "lblQueDone2"};
    Timer tmrBuffers{*this, "tmrBuffers", std::chrono::milliseconds(10)};

    bool IsAlwaysAtHand() const override { return true; }

    std::string FindBoard() override;
    bool BoardAvailable() const override { return !boardName_.empty(); }
    bool IsDemonstration() const override { return device_->IsDemonstration(); }
    std::string Problem() const override { return problem_; }
    void InitializeBoard() override;
    void Unload() override;
    void ShowBoard(bool) override {}  // opened separately: in front, it would hide the drop
    float OneConversion(int channel) override;
    int WaitforButton(int channel) override;
    void CaptureBlock(int channel) override;
    bool BlockCaptured() const override { return blockCaptured_; }
    void GetResultsVolts(std::vector<float>& volts, int& count) override;
    void StopAcq() override;

  private:
    void StartAcq();
    void StartFlow();
    void ServeBuffers();
    bool TakeBuffers();
    void TakeBuffer(SampleBuffer buffer);
    bool IsInOrder(const SampleBuffer& buffer);
    bool Fires(RawSample raw) const;
    void TakeEvents();
    void FellBehind();
    void WatchForSilence();
    void CompleteBlock();
    void Fail(const std::string& why);
    std::optional<std::string> Refusal(const std::function<void()>& operation);

    void Log(const std::string& line);
    void ShowProgress();
    void ShowQueues();
    void DrawNewestBuffer();
    void DrawBlock();
    Plot PlotOf(const std::string& title, const std::vector<RawSample>& samples) const;

    Program& program_;
    std::unique_ptr<AcquisitionDevice> device_;
    DropDoor* trigger_ = nullptr;  ///< while a capture runs
    std::string boardName_;
    std::string problem_;  ///< why no board was found, or why the capture in hand failed
    int channel_ = 1;
    CaptureRing ring_;
    bool blockCaptured_ = false;
    bool acquiring_ = false;
    int doneWhenServed_ = 0;
    int newStarts_ = 0;  ///< of the capture in hand, because the computer fell behind
    std::chrono::milliseconds lastData_{};
    std::chrono::milliseconds lastShown_{};
};

}  // namespace bellmark
