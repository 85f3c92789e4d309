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
    bool expectValues(std::size_t count) override;
    bool scalar(const Scalar& scalar) override;
    bool beginText(TextKind kind) override;
    bool text(std::string_view piece) override;
    bool endText() override;
    bool wholeText(TextKind kind, std::string_view content) override;

    /// The value at the root, once it has been read.
    PropertyList takeResult() { return std::move(result_); }

private:
    struct Container {
        PropertyList value;
        std::string key{};   ///< the last one, in a dictionary
        bool isPaid = false; ///< with all values that it will hold
    };

    bool begin(PropertyList container);
    bool end();
    bool chargeValue();
    bool chargeText(TextKind kind);
    void addText(TextKind kind, std::string_view content);

    /// Makes the value where it stays.
    template <class T>
    void add(T&& value);

    template <class T>
    void addTo(Container& parent, T&& value);

    Cost cost_;
    std::vector<Container> containers_;
    TextKind textKind_ = TextKind::string;
    std::string text_;
    PropertyList result_;
};

} // namespace Platform::PropertyLists
