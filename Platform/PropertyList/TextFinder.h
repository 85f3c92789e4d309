#pragma once

#include "Platform/PropertyList/Events.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

namespace Platform::PropertyLists {

/// Finds the text under one key of the dictionary at the root, and builds nothing. It wants no
/// more as soon as the root is no dictionary.
class TextFinder final : public Receiver {
public:
    TextFinder(std::string_view key, std::size_t maximumText)
        : key_(key)
        , maximumText_(maximumText) {}

    /// What the values would cost if they were built; without this, it is not counted.
    void limitCost(std::size_t limit) { cost_ = Cost(limit); }

    bool beginDictionary() override;
    bool endDictionary() override;
    bool beginArray() override;
    bool endArray() override;
    bool scalar(const Scalar& scalar) override;
    bool beginText(TextKind kind) override;
    bool text(std::string_view piece) override;
    bool endText() override;

    std::optional<std::string> takeResult() { return std::move(result_); }

private:
    enum class Use : std::uint8_t { none, compare, keep };

    bool beginValue();
    void compare(std::string_view piece);
    void keep(std::string_view piece);

    std::string key_;
    std::size_t maximumText_;
    Cost cost_{std::numeric_limits<std::size_t>::max()};
    std::size_t depth_ = 0;
    std::string_view unmatched_; ///< what the present key still has to match
    bool matches_ = false;       ///< so far
    bool isWanted_ = false;      ///< the value that comes next
    bool isFull_ = false;
    Use use_ = Use::none;
    std::optional<std::string> result_;
};

} // namespace Platform::PropertyLists
