#pragma once

#include <cstddef>
#include <functional>
#include <utility>
#include <vector>

namespace bellmark {

/// An event of the document. Listeners are called in the order in which they were added, and stay for the event's life.
template <class... Arguments>
class PDDXEvent {
  public:
    using Listener = std::function<void(Arguments...)>;

    void AddListener(Listener listener) { listeners_.push_back(std::move(listener)); }

    void Raise(Arguments... arguments) const {
        const std::size_t count = listeners_.size();
        for (std::size_t i = 0; i < count; ++i) {
            // A copy: the listener may add another one, which moves the list.
            const Listener listener = listeners_[i];
            listener(arguments...);
        }
    }

  private:
    std::vector<Listener> listeners_;
};

}  // namespace bellmark
