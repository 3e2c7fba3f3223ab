#pragma once

#include <cstdint>
#include <list>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "platform/text.h"

namespace bellmark {

/// A handle that a document does not hold, or holds already.
class PDDXError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Sections of a file or elements of a section: owned, in order of insertion, found by handle in constant time. Handles
/// compare without regard to case, as names in the files do. Items keep their address as long as they are held.
template <class Item>
class PDDXCollection {
  public:
    PDDXCollection() = default;
    PDDXCollection(const PDDXCollection&) = delete;
    PDDXCollection& operator=(const PDDXCollection&) = delete;

    /// Makes an item of the arguments and holds it as the last. Throws PDDXError when its handle is held already.
    template <class... Arguments>
    Item& Add(Arguments&&... arguments) {
        Item& item = items_.emplace_back(std::forward<Arguments>(arguments)...);
        if (!index_.emplace(item.Handle(), std::prev(items_.end())).second) {
            const std::string handle(item.Handle());
            items_.pop_back();
            throw AlreadyHeld(handle);
        }
        return item;
    }

    /// Throw PDDXError when the handle is unknown.
    Item& At(std::string_view handle) { return *Position(handle); }
    const Item& At(std::string_view handle) const { return *Position(handle); }

    bool Contains(std::string_view handle) const { return index_.find(handle) != index_.end(); }

    /// Throws PDDXError when the handle is unknown.
    void Remove(std::string_view handle) {
        const auto position = Position(handle);
        index_.erase(handle);
        items_.erase(position);
    }

    /// Throws PDDXError when the old handle is unknown, or the new one belongs to another item.
    void Rename(std::string_view from, std::string to) {
        const auto position = Position(from);
        if (const auto other = index_.find(to); other != index_.end() && other->second != position) {
            throw AlreadyHeld(to);
        }
        auto entry = index_.extract(from);
        position->handle_ = std::move(to);
        entry.key() = position->handle_;
        index_.insert(std::move(entry));
    }

    std::size_t Size() const { return items_.size(); }
    auto begin() { return items_.begin(); }
    auto end() { return items_.end(); }
    auto begin() const { return items_.begin(); }
    auto end() const { return items_.end(); }

  private:
    struct HashIgnoringCase {
        std::size_t operator()(std::string_view handle) const {
            std::uint64_t hash = 14695981039346656037U;  // FNV-1a
            for (const char letter : handle) {
                const bool isCapital = letter >= 'A' && letter <= 'Z';
                const auto byte = static_cast<unsigned char>(letter);
                hash = (hash ^ (isCapital ? byte + ('a' - 'A') : byte)) * 1099511628211U;
            }
            return static_cast<std::size_t>(hash);
        }
    };
    struct SameIgnoringCase {
        bool operator()(std::string_view a, std::string_view b) const { return EqualIgnoringCase(a, b); }
    };

    typename std::list<Item>::iterator Position(std::string_view handle) const {
        const auto entry = index_.find(handle);
        if (entry == index_.end()) {
            throw PDDXError("The PDDX document has no " + std::string(Item::kind) + " \"" + std::string(handle) +
                            "\".");
        }
        return entry->second;
    }

    static PDDXError AlreadyHeld(std::string_view handle) {
        return PDDXError("The PDDX document already has the " + std::string(Item::kind) + " \"" + std::string(handle) +
                         "\".");
    }

    std::list<Item> items_;
    // The keys are views of the items' own handles.
    std::unordered_map<std::string_view, typename std::list<Item>::iterator, HashIgnoringCase, SameIgnoringCase> index_;
};

}  // namespace bellmark
