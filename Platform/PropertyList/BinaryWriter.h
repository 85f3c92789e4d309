#pragma once

#include "Platform/PropertyList/Events.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace Platform::PropertyLists {

/// Writes the binary form, equal scalars, texts and data once. It wants no more when it meets
/// text that is not UTF-8.
class BinaryWriter final : public Receiver {
public:
    bool beginDictionary() override;
    bool endDictionary() override;
    bool beginArray() override;
    bool endArray() override;
    bool scalar(const Scalar& scalar) override;
    bool beginText(TextKind kind) override;
    bool text(std::string_view piece) override;
    bool endText() override;

    std::string takeList();

private:
    using Reference = std::size_t;

    struct Container {
        bool isDictionary = false;
        std::vector<Reference> keys;
        std::vector<Reference> values;
    };

    /// A container by its place in `closed_`; any other object by its bytes, which `unique_` holds.
    using Object = std::variant<std::size_t, std::string_view>;

    void addUnique(std::string bytes);
    void add(Reference reference);
    bool close();

    std::unordered_map<std::string, Reference> unique_;
    std::vector<Object> objects_;
    std::vector<Container> closed_;
    std::vector<Container> open_;
    TextKind textKind_ = TextKind::string;
    std::string text_;
};

} // namespace Platform::PropertyLists
