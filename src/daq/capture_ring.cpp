#include "daq/capture_ring.h"

#include <algorithm>

#include "run/drop_record.h"

namespace bellmark {

static_assert(bufferSamples * bufferCount == samplesPerSecond);

void CaptureRing::Begin() {
    ringPosition_ = 0;
    buffersFilled_ = 0;
    skipsFirstBuffers_ = true;
    triggered_ = false;
    samplesAfterTrigger_ = 0;
    nextSample_ = 0;
}

void CaptureRing::Keep(const SampleBuffer& buffer) {
    ringPosition_ = (ringPosition_ + 1) % bufferCount;
    // Assigned, not moved: the memory of the slots and of the buffer stays the same for hours.
    slots_[ringPosition_] = buffer.samples;
    buffersFilled_ = std::min(buffersFilled_ + 1, bufferCount);
    nextSample_ = buffer.firstSample + buffer.samples.size();
}

std::vector<RawSample> CaptureRing::InOrderOfTime() const {
    std::vector<RawSample> samples;
    samples.reserve(samplesPerSecond);
    for (int k = 1; k <= buffersFilled_; ++k) {
        const auto slot = (static_cast<int>(ringPosition_) + k + bufferCount - buffersFilled_) % bufferCount;
        const auto& buffer = slots_[static_cast<std::size_t>(slot)];
        samples.insert(samples.end(), buffer.begin(), buffer.end());
    }
    // Only buffers of another length than they should have hold more than a second.
    if (samples.size() > samplesPerSecond) samples.erase(samples.begin(), samples.end() - samplesPerSecond);
    return samples;
}

}  // namespace bellmark
