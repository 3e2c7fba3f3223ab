#pragma once

#include <string>
#include <vector>

namespace bellmark {

/// A data acquisition board: one channel at a time, 15000 samples per second. The simulated board and every hardware
/// back-end implement this; frmDAQ chooses between them.
class Board {
  public:
    virtual ~Board() = default;
    /// Looks for the hardware; its name, or an empty text when there is none.
    virtual std::string FindBoard() = 0;
    virtual bool BoardAvailable() const = 0;
    virtual bool IsDemonstration() const { return false; }
    /// Why FindBoard found none, or why the capture in hand failed; empty when all is well.
    virtual std::string Problem() const { return {}; }
    virtual void InitializeBoard() = 0;
    virtual void Unload() = 0;
    virtual void ShowBoard(bool visible) = 0;

    virtual float OneConversion(int channel) = 0;  ///< volts; throws BoardError when the board cannot be read
    virtual int WaitforButton(int channel) = 0;    ///< code of the key that the button represents; 0 for none
    /// Starts the capture of one block. BlockCaptured says when it is complete, GetResultsVolts fetches it.
    virtual void CaptureBlock(int channel) = 0;
    virtual bool BlockCaptured() const = 0;
    /// Fills volts, an array of the size of the whole sample store: elements 0 to count are set, both included.
    virtual void GetResultsVolts(std::vector<float>& volts, int& count) = 0;
    virtual void StopAcq() = 0;

    int CurrentChannelType = 1;
    int TriggerThreshold = 0;
};

}  // namespace bellmark
