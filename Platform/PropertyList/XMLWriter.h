#pragma once

#include "Platform/PropertyList/Events.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace Platform::PropertyLists {

/// Writes the XML form. It wants no more when it meets what XML cannot hold.
class XMLWriter final : public Receiver {
public:
    XMLWriter();

    bool beginDictionary() override;
    bool endDictionary() override;
    bool beginArray() override;
    bool endArray() override;
    bool scalar(const Scalar& scalar) override;
    bool beginText(TextKind kind) override;
    bool text(std::string_view piece) override;
    bool endText() override;

    std::string takeDocument();

private:
    bool begin(std::string_view name);
    bool end(std::string_view name);
    void indent();
    bool element(std::string_view name, std::string_view content);
    bool escaped(std::string_view text);
    void data(std::string_view bytes);

    bool write(PropertyList::Null) { return false; }

    bool write(PropertyList::UID) { return false; }

    bool write(bool value);
    bool write(std::int64_t value);
    bool write(std::uint64_t value);
    bool write(double value);
    bool write(PropertyList::Date value);

    std::string document_;
    std::size_t depth_ = 0;
    TextKind textKind_ = TextKind::string;
    bool isEmpty_ = false; ///< the container that was begun last
};

} // namespace Platform::PropertyLists
