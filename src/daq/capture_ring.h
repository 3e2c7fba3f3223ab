#pragma once

#include <cstdint>
#include <vector>

#include "daq/acquisition_device.h"

namespace bellmark {

inline constexpr int bufferSamples = 500;
inline constexpr int bufferCount = 30;  ///< one second
inline constexpr int postTriggerTarget = 10000;

/// The last second of a flow of buffers. The hardware has no trigger of the kind that a drop needs: it runs on, each
/// sample is tested in software, and when the flow is stopped after the trigger, the ring holds the time before the
/// pulse, too.
class CaptureRing {
  public:
    CaptureRing() : slots_(bufferCount) {}

    /// Empties the ring for a new capture.
    void Begin();

    /// Copies a buffer into the ring. The first buffers are not tested, so that the hardware has settled. fires: called
    /// for each sample, from the first tested buffer to the trigger. True once 10000 samples from the trigger on are in
    /// the ring.
    template <class Fires>
    bool Take(const SampleBuffer& buffer, const Fires& fires) {
        Keep(buffer);
        if (skipsFirstBuffers_) {
            skipsFirstBuffers_ = buffersFilled_ <= 1;
        } else if (triggered_) {
            samplesAfterTrigger_ += static_cast<int>(buffer.samples.size());
        } else {
            Test(buffer, fires);
        }
        return triggered_ && samplesAfterTrigger_ >= postTriggerTarget;
    }

    /// The raw values in the order of time: the newest 15000 of those in the ring.
    std::vector<RawSample> InOrderOfTime() const;

    int BuffersFilled() const { return buffersFilled_; }
    bool IsTriggered() const { return triggered_; }
    std::uint64_t NextSample() const { return nextSample_; }  ///< place in the flow at which the next buffer begins
    const std::vector<RawSample>& NewestBuffer() const { return slots_[ringPosition_]; }

  private:
    void Keep(const SampleBuffer& buffer);

    template <class Fires>
    void Test(const SampleBuffer& buffer, const Fires& fires) {
        const std::vector<RawSample>& samples = buffer.samples;
        for (std::size_t i = 0; i < samples.size() && !triggered_; ++i) {
            triggered_ = fires(samples[i]);
            if (triggered_) samplesAfterTrigger_ = static_cast<int>(samples.size() - i);
        }
    }

    std::vector<std::vector<RawSample>> slots_;
    std::size_t ringPosition_ = 0;  ///< slot of the newest buffer; the first goes to slot 1
    int buffersFilled_ = 0;
    bool skipsFirstBuffers_ = true;
    bool triggered_ = false;
    int samplesAfterTrigger_ = 0;
    std::uint64_t nextSample_ = 0;
};

}  // namespace bellmark
