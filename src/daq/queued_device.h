#pragma once

#include <deque>
#include <span>

#include "daq/acquisition_device.h"

namespace bellmark {

/// The buffers of a device whose driver delivers samples in portions of any length.
class QueuedDevice : public AcquisitionDevice {
  public:
    void PutReady(SampleBuffer buffer) override { ready_.push_back(std::move(buffer)); }
    std::optional<SampleBuffer> TakeDone() override;
    std::optional<DeviceEvent> TakeEvent() override;
    QueueSizes Queues() const override;

  protected:
    /// Samples that the ready buffers still have room for: more must stay with the driver.
    std::size_t Room() const;
    /// Fills the ready buffers one after the other, at most Room() samples.
    void Deliver(std::span<const RawSample> samples);
    void Raise(DeviceEvent event) { events_.push_back(event); }
    /// Frees all buffers, forgets the events and counts the samples from 0 again.
    void Flush();

  private:
    std::deque<SampleBuffer> ready_;
    std::deque<SampleBuffer> done_;
    std::deque<DeviceEvent> events_;
    std::size_t filled_ = 0;  ///< samples in the first ready buffer
    std::uint64_t delivered_ = 0;
};

}  // namespace bellmark
