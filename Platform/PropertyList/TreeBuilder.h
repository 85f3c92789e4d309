#pragma once

#include "Platform/PropertyList/Events.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Platform::PropertyLists {

/// Builds the value that a reader reads, up to a cost.
class TreeBuilder final : public Receiver {
public:
    explicit TreeBuilder(std::size_t costLimit)
        : cost_(costLimit) {}

    bool beginDictionary() override;
    bool endDictionary() override;
    bool beginArray() override;
    bool endArray() override;
    bool scalar(const Scalar& scalar) override;
    bool beginText(TextKind kind) override;
    bool text(std::string_view piece) override;
    bool endText() override;

    /// The value at the root, once it has been read.
    PropertyList takeResult() { return std::move(result_); }

private:
    struct Container {
        PropertyList value;
        std::string key; ///< the last one, in a dictionary
    };

    bool begin(PropertyList container);
    bool end();
    void add(PropertyList&& value);

    Cost cost_;
    std::vector<Container> containers_;
    TextKind textKind_ = TextKind::string;
    std::string text_;
    PropertyList result_;
};

} // namespace Platform::PropertyLists
