#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace bellmark {

/// A conversion as the hardware delivers it, unsigned; only the device knows its volts.
using RawSample = std::uint32_t;

/// Memory for the samples of a continuous flow. The caller makes it in the length that it wants back.
struct SampleBuffer {
    std::vector<RawSample> samples;
    std::uint64_t firstSample = 0;  ///< place of samples[0] in the flow, counted from its start
};

/// Buffers that wait to be filled, are being filled, and wait to be taken.
struct QueueSizes {
    int ready = 0;
    int inProcess = 0;
    int done = 0;
};

enum class DeviceEvent {
    BufferReused,
    PreTriggerBufferDone,
    QueueDone,
    QueueStopped,
    SubSystemError,
    TriggerError,
    Overrun,  ///< samples were lost: the flow has stopped
    Underrun
};

/// The hardware refused an operation. what() is in words for the operator.
class DeviceError : public std::runtime_error {
  public:
    DeviceError(int number, const std::string& text) : std::runtime_error(text), number_(number) {}
    int Number() const { return number_; }  ///< of the library behind the device; 0 when it gives none

  private:
    int number_;
};

/// What frmKUSB needs of analog input hardware. A back-end for a kind of board implements this and nothing else. Every
/// operation returns at once; each may throw DeviceError.
class AcquisitionDevice {
  public:
    virtual ~AcquisitionDevice() = default;

    virtual std::vector<std::string> Boards() = 0;  ///< names of the boards that can be used, the first choice first
    virtual std::string Problem() const { return {}; }  ///< why Boards left out a board, for the operator
    virtual bool IsDemonstration() const { return false; }
    virtual void Select(const std::string& board) = 0;  ///< all further calls are about this board
    virtual void Release() = 0;                         ///< ends the use of the board; nothing when none is in use
    virtual int ResolutionBits() const = 0;

    /// One conversion on a channel; not while a flow runs.
    virtual RawSample SingleValue(int channel) = 0;
    /// Volts of a raw value from the channel and range used last, with the calibration that the hardware has.
    virtual float VoltsOf(RawSample raw) const = 0;

    /// Starts a flow of samples into the ready buffers, one after the other, each filled to its length.
    virtual void StartContinuous(int channel, int samplesPerSecond) = 0;
    /// Fills buffers with the samples that have arrived. Called again and again while a flow runs.
    virtual void Serve() = 0;
    /// Ends the flow and frees all buffers. Does nothing when none runs.
    virtual void Stop() = 0;

    virtual void PutReady(SampleBuffer buffer) = 0;
    virtual std::optional<SampleBuffer> TakeDone() = 0;
    virtual std::optional<DeviceEvent> TakeEvent() = 0;  ///< the oldest that was not yet taken
    virtual QueueSizes Queues() const = 0;
};

}  // namespace bellmark
