#include "CorbelKit/Services/InfoPlist.h"

#include "CorbelKit/Coding/PropertyListCoder.h"

#include <string_view>

namespace CorbelKit {
namespace {

namespace Key {
constexpr std::string_view build = "CFBundleVersion";
constexpr std::string_view executable = "CFBundleExecutable";
constexpr std::string_view version = "CFBundleShortVersionString";
constexpr std::string_view identifier = "CFBundleIdentifier";
} // namespace Key

// By way of the serialised list, so that the decoder alone decides what is required and of what
// type.
std::optional<InfoPlist> converted(const Platform::PropertyList& information) {
    const auto bytes = information.write(Platform::PropertyList::Format::xml);
    if (!bytes)
        return std::nullopt;
    auto list = PropertyListDecoder::shared().decode<InfoPlist>(*bytes);
    return list ? std::optional(std::move(*list)) : std::nullopt;
}

} // namespace

std::optional<InfoPlist> InfoPlist::ofMainBundle() {
    return of(Platform::Bundle::main());
}

std::optional<InfoPlist> InfoPlist::of(const Platform::Bundle& bundle) {
    return converted(bundle.infoDictionary());
}

std::optional<InfoPlist> InfoPlist::at(const Platform::URL& bundleURL) {
    const auto information = Platform::Bundle::informationDictionary(bundleURL);
    return information ? converted(*information) : std::nullopt;
}

InfoPlist InfoPlist::decode(const Decoder& decoder) {
    const auto container = decoder.container();
    return {.build = container.decode<std::string>(Key::build),
            .executable = container.decodeIfPresent<std::string>(Key::executable),
            .version = container.decodeIfPresent<std::string>(Key::version),
            .identifier = container.decode<std::string>(Key::identifier)};
}

void InfoPlist::encode(Encoder& encoder) const {
    auto container = encoder.container();
    container.encode(Key::build, build);
    container.encodeIfPresent(Key::executable, executable);
    container.encodeIfPresent(Key::version, version);
    container.encode(Key::identifier, identifier);
}

} // namespace CorbelKit
