#include "Platform/JSON.h"

#include "Platform/PropertyList/TreeBuilder.h"
#include "Platform/UTF8.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

namespace Platform::JSON {
namespace {

using nlohmann::json;
using PropertyLists::TextKind;

/// Builds the value while the parser reads, with the bounds that property lists have.
class Reading final : public nlohmann::json_sax<json> {
public:
    PropertyList takeResult() { return builder_.takeResult(); }

    bool null() override { return builder_.scalar(PropertyList::Null()); }

    bool boolean(bool value) override { return builder_.scalar(value); }

    bool number_integer(number_integer_t value) override { return builder_.scalar(value); }

    bool number_unsigned(number_unsigned_t value) override {
        if (std::in_range<std::int64_t>(value))
            return builder_.scalar(static_cast<std::int64_t>(value));
        return builder_.scalar(value);
    }

    bool number_float(number_float_t value, const string_t& /*text*/) override {
        return builder_.scalar(value);
    }

    bool string(string_t& value) override { return builder_.wholeText(TextKind::string, value); }

    bool binary(binary_t& /*value*/) override { return false; }

    bool key(string_t& value) override { return builder_.wholeText(TextKind::key, value); }

    bool start_object(std::size_t /*count*/) override {
        return enter() && builder_.beginDictionary();
    }

    bool end_object() override { return leave() && builder_.endDictionary(); }

    bool start_array(std::size_t /*count*/) override { return enter() && builder_.beginArray(); }

    bool end_array() override { return leave() && builder_.endArray(); }

    bool parse_error(std::size_t /*position*/, const std::string& /*token*/,
                     const json::exception& /*error*/) override {
        return false;
    }

private:
    bool enter() { return ++depth_ <= PropertyList::Limits().depth; }

    bool leave() {
        --depth_;
        return true;
    }

    PropertyLists::TreeBuilder builder_{PropertyList::Limits().cost};
    std::size_t depth_ = 0;
};

/// A value as the library has it; absent for what JSON has no form for.
class Conversion {
public:
    std::optional<json> convert(const PropertyList& value) {
        return std::visit([this](const auto& content) { return this->converted(content); },
                          value.value());
    }

private:
    template <class Scalar>
    static std::optional<json> converted(const Scalar& value) {
        return json(value);
    }

    static std::optional<json> converted(PropertyList::Null /*value*/) { return json(nullptr); }

    static std::optional<json> converted(double value) {
        return std::isfinite(value) ? std::optional(json(value)) : std::nullopt;
    }

    static std::optional<json> converted(const std::string& text) {
        return UTF8::isWellFormed(text) ? std::optional(json(text)) : std::nullopt;
    }

    static std::optional<json> converted(const PropertyList::Data& /*value*/) { return {}; }

    static std::optional<json> converted(const PropertyList::Date& /*value*/) { return {}; }

    static std::optional<json> converted(PropertyList::UID /*value*/) { return {}; }

    std::optional<json> converted(const PropertyList::Array& elements) {
        auto list = json::array();
        return fill(elements,
                    [&](const PropertyList& element) {
                        auto part = convert(element);
                        if (part)
                            list.push_back(std::move(*part));
                        return part.has_value();
                    })
                   ? std::optional(std::move(list))
                   : std::nullopt;
    }

    std::optional<json> converted(const PropertyList::Dictionary& entries) {
        auto object = json::object();
        return fill(entries,
                    [&](const auto& entry) {
                        auto part =
                            UTF8::isWellFormed(entry.first) ? convert(entry.second) : std::nullopt;
                        if (part)
                            object.emplace(entry.first, std::move(*part));
                        return part.has_value();
                    })
                   ? std::optional(std::move(object))
                   : std::nullopt;
    }

    bool fill(const auto& parts, const auto& add) {
        const bool fits =
            ++depth_ <= PropertyList::Limits().depth && std::ranges::all_of(parts, add);
        --depth_;
        return fits;
    }

    std::size_t depth_ = 0;
};

} // namespace

std::optional<PropertyList> read(std::span<const std::byte> bytes) {
    const auto text = PropertyLists::characters(bytes);
    Reading reading;
    // JSON writes no NUL other than escaped; the library would take one for the end of the text.
    if (text.find('\0') != std::string_view::npos ||
        !json::sax_parse(text.begin(), text.end(), &reading))
        return std::nullopt;
    return reading.takeResult();
}

std::optional<std::vector<std::byte>> write(const PropertyList& value) {
    const auto converted = Conversion().convert(value);
    if (!converted)
        return std::nullopt;
    const auto text = converted->dump();
    const auto bytes = std::as_bytes(std::span(text));
    return std::vector<std::byte>(bytes.begin(), bytes.end());
}

} // namespace Platform::JSON
