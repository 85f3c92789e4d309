#pragma once

#include "Platform/Memory.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <utility>

namespace Platform {

/// What waits to be delivered, in the order of its turns: one for each identifier, since a later
/// request takes the place of an earlier one. No operation takes longer the more there is waiting,
/// but for the logarithm. An entry has a `request`. For one thread at a time.
template <typename Turn, typename Entry>
class NotificationQueue {
public:
    using Entries = std::map<Turn, Entry>;
    using Iterator = typename Entries::iterator;

    bool isEmpty() const { return entries_.empty(); }

    bool contains(const std::string& identifier) const { return turns_.contains(identifier); }

    Iterator begin() { return entries_.begin(); }

    Iterator end() { return entries_.end(); }

    /// Gives back the earlier one of the identifier. The turn is nobody else's.
    std::optional<Entry> add(Turn turn, Entry entry) {
        std::optional<Entry> earlier;
        if (const auto found = turns_.find(entry.request.identifier); found != turns_.end())
            earlier = remove(entries_.find(found->second));
        ++added_;
        turns_.emplace(entry.request.identifier, turn);
        entries_.emplace(std::move(turn), std::move(entry));
        return earlier;
    }

    /// Iterators to others stay.
    Entry take(Iterator place) {
        auto entry = remove(place);
        if (entries_.empty() && std::exchange(added_, 0) >= many)
            releaseFreedMemory();
        return entry;
    }

    /// All, in their order.
    Entries takeAll() {
        turns_.clear();
        return std::exchange(entries_, {});
    }

private:
    static constexpr std::size_t many = 256; // of which the allocator would keep the room

    Entry remove(Iterator place) {
        auto entry = std::move(entries_.extract(place).mapped());
        turns_.erase(entry.request.identifier);
        return entry;
    }

    Entries entries_;
    std::map<std::string, Turn> turns_; // by identifier; a hash table would keep its size
    std::size_t added_ = 0;             // since there was none
};

} // namespace Platform
