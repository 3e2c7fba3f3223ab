#include "daq/queued_device.h"

#include <algorithm>

namespace bellmark {

namespace {

template <class Item>
std::optional<Item> TakeFirst(std::deque<Item>& queue) {
    if (queue.empty()) return {};
    std::optional<Item> first(std::move(queue.front()));
    queue.pop_front();
    return first;
}

}  // namespace

std::optional<SampleBuffer> QueuedDevice::TakeDone() {
    return TakeFirst(done_);
}

std::optional<DeviceEvent> QueuedDevice::TakeEvent() {
    return TakeFirst(events_);
}

QueueSizes QueuedDevice::Queues() const {
    const bool isFilling = filled_ > 0;
    return {static_cast<int>(ready_.size()) - (isFilling ? 1 : 0), isFilling ? 1 : 0, static_cast<int>(done_.size())};
}

std::size_t QueuedDevice::Room() const {
    std::size_t room = 0;
    for (const SampleBuffer& buffer : ready_) room += buffer.samples.size();
    return room - filled_;
}

void QueuedDevice::Deliver(std::span<const RawSample> samples) {
    while (!samples.empty() && !ready_.empty()) {
        SampleBuffer& buffer = ready_.front();
        if (filled_ == 0) buffer.firstSample = delivered_;
        const std::size_t count = std::min(samples.size(), buffer.samples.size() - filled_);
        std::copy_n(samples.begin(), count, buffer.samples.begin() + static_cast<std::ptrdiff_t>(filled_));
        samples = samples.subspan(count);
        filled_ += count;
        delivered_ += count;
        if (filled_ < buffer.samples.size()) return;
        done_.push_back(std::move(buffer));
        ready_.pop_front();
        filled_ = 0;
    }
}

void QueuedDevice::Flush() {
    ready_.clear();
    done_.clear();
    events_.clear();
    filled_ = 0;
    delivered_ = 0;
}

}  // namespace bellmark
