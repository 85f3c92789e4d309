#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace Platform {

/// What has changed since the last hand-over, by folder and name: its path is asked for only when
/// it is handed over, for a folder above it may move until then. For one thread at a time.
class FolderChanges {
public:
    using Names = std::unordered_set<std::string>;

    bool isEmpty() const { return names_.empty(); }

    /// Whether there are too many to keep, as where a call-back takes long amid a storm.
    bool isFull() const { return count_ >= most; }

    /// An empty name is the folder itself.
    void add(int folder, std::string_view name);

    /// Those of one folder, or of all.
    Names take(int folder);
    std::unordered_map<int, Names> takeAll();

private:
    static constexpr std::size_t most = 200'000;

    std::unordered_map<int, Names> names_;
    std::size_t count_ = 0;
};

} // namespace Platform
