#pragma once

#include <vector>

#include "app/doors.h"
#include "controls/controls.h"
#include "controls/picture.h"
#include "controls/screen.h"
#include "daq/board.h"
#include "daq/drop_file_reader.h"

namespace bellmark {

class Program;

/// The simulated board: serves drops from text files, or random volts, so that the whole calibration runs without
/// hardware.
class frmSimulator : public Screen, public SimulatorDoor, public Board {
  public:
    explicit frmSimulator(Program& program);

    Label lblSource{*this, "lblSource"};  ///< path of the file that is served
    Picture picChart{*this, "picChart"};
    Timer Timer1{*this, "Timer1", std::chrono::milliseconds(20)};

    void SetFile(const std::string& baseName) override;
    void SetRandom(float mean, float amplitude) override;

    std::string FindBoard() override { return "Simulator"; }
    bool BoardAvailable() const override { return true; }
    void InitializeBoard() override {}
    void Unload() override;
    void ShowBoard(bool) override {}  // the drop screen shows the drop; the chart can be opened separately
    float OneConversion(int channel) override;
    int WaitforButton(int) override { return 0; }
    void CaptureBlock(int channel) override;
    bool BlockCaptured() const override { return blockCaptured_; }
    void GetResultsVolts(std::vector<float>& volts, int& count) override;
    void StopAcq() override { stopRequested_ = true; }

  private:
    enum class Source { File = 0, RandomVolts = 1 };

    void LoadRandom();
    void LoadFile();
    Path TemplatePath(const Path& folder) const;
    Path SavedDropPath(const Path& folder) const;
    void TakeSamples(const DropSamples& read);
    void TellFileProblem(const Path& path);
    void DrawChart();
    void Timer1_Tick();
    void EndReplay();

    Program& program_;
    Source source_ = Source::File;
    std::string sourceName_;
    float randomMean_ = 0;
    float randomAmplitude_ = 0;
    std::vector<float> samples_;
    int sampleCount_ = 0;
    float lowest_ = 1e20F;
    float highest_ = -1e20F;
    bool blockCaptured_ = false;
    bool stopRequested_ = false;
    int replayRemaining_ = 0;
};

}  // namespace bellmark
