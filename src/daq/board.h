#pragma once

#include <string>
#include <vector>

namespace bellmark {

/// A data acquisition board: one channel at a time, 15000 samples a second. The simulated board and every hardware
/// back-end offer this; frmDAQ chooses between them.
class Board {
  public:
    virtual ~Board() = default;
    /// Looks for the hardware; its name, or an empty text when there is none.
    virtual std::string FindBoard() = 0;
    virtual bool BoardAvailable() const = 0;
    virtual void InitializeBoard() = 0;
    virtual void Unload() = 0;
    virtual void ShowBoard(bool visible) = 0;

    virtual float OneConversion(int channel) = 0;  ///< volts
    virtual int WaitforButton(int channel) = 0;    ///< code of the key that the button stands for; 0 for none
    /// Starts the capture of one block. BlockCaptured tells when it is there, GetResultsVolts fetches it.
    virtual void CaptureBlock(int channel) = 0;
    virtual bool BlockCaptured() const = 0;
    /// volts is an array of the whole sample store; elements from 0 to count are set, both ends included.
    virtual void GetResultsVolts(std::vector<float>& volts, int& count) = 0;
    virtual void StopAcq() = 0;

    int CurrentChannelType = 1;
    int TriggerThreshold = 0;
};

}  // namespace bellmark
