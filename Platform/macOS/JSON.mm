#include "Platform/JSON.h"

#include "Platform/macOS/Text.h"

#import <Foundation/Foundation.h>

#include <cmath>
#include <cstring>
#include <string>
#include <utility>

namespace Platform::JSON {
namespace {

PropertyList portableNumber(NSNumber* number) {
    if (number == static_cast<id>(kCFBooleanTrue) || number == static_cast<id>(kCFBooleanFalse))
        return number.boolValue != NO;
    const char* const type = number.objCType;
    if (std::strcmp(type, "d") == 0 || std::strcmp(type, "f") == 0)
        return number.doubleValue;
    const std::uint64_t magnitude = number.unsignedLongLongValue;
    if (std::strcmp(type, "Q") == 0 && !std::in_range<std::int64_t>(magnitude))
        return magnitude;
    return std::int64_t{number.longLongValue};
}

// The system's reader goes no deeper than 512 containers.
PropertyList portableObject(id object) {
    if ([object isKindOfClass:[NSString class]])
        return portableText(object);
    if ([object isKindOfClass:[NSNumber class]])
        return portableNumber(object);
    if ([object isKindOfClass:[NSArray class]]) {
        PropertyList::Array elements;
        for (id element in static_cast<NSArray*>(object))
            elements.push_back(portableObject(element));
        return elements;
    }
    if ([object isKindOfClass:[NSDictionary class]]) {
        PropertyList::Dictionary entries;
        NSDictionary* const dictionary = object;
        for (NSString* key in dictionary)
            entries.insert_or_assign(portableText(key), portableObject(dictionary[key]));
        return entries;
    }
    return {};
}

/// A value as an object of the system's; nil for what JSON has no form for.
class Conversion {
public:
    id convert(const PropertyList& value) {
        return std::visit([this](const auto& content) { return this->converted(content); },
                          value.value());
    }

private:
    static id converted(PropertyList::Null /*value*/) { return [NSNull null]; }

    static id converted(bool value) { return [NSNumber numberWithBool:value]; }

    static id converted(std::int64_t value) { return [NSNumber numberWithLongLong:value]; }

    static id converted(std::uint64_t value) { return [NSNumber numberWithUnsignedLongLong:value]; }

    static id converted(double value) {
        return std::isfinite(value) ? [NSNumber numberWithDouble:value] : nil;
    }

    static id converted(const std::string& text) { return foundationText(text); }

    static id converted(const PropertyList::Data& /*value*/) { return nil; }

    static id converted(const PropertyList::Date& /*value*/) { return nil; }

    static id converted(PropertyList::UID /*value*/) { return nil; }

    id converted(const PropertyList::Array& elements) {
        NSMutableArray* const list = [NSMutableArray array];
        const bool fits = ++depth_ <= PropertyList::Limits().depth;
        for (const auto& element : elements) {
            id const part = fits ? convert(element) : nil;
            if (part == nil)
                return nil;
            [list addObject:part];
        }
        --depth_;
        return fits ? list : nil;
    }

    id converted(const PropertyList::Dictionary& entries) {
        NSMutableDictionary* const dictionary = [NSMutableDictionary dictionary];
        const bool fits = ++depth_ <= PropertyList::Limits().depth;
        for (const auto& [key, value] : entries) {
            NSString* const name = foundationText(key);
            id const part = fits ? convert(value) : nil;
            if (name == nil || part == nil)
                return nil;
            dictionary[name] = part;
        }
        --depth_;
        return fits ? dictionary : nil;
    }

    std::size_t depth_ = 0;
};

} // namespace

std::optional<PropertyList> read(std::span<const std::byte> bytes) {
    if (bytes.size() > PropertyList::Limits().cost)
        return std::nullopt;
    @autoreleasepool {
        NSData* const data = [NSData dataWithBytes:bytes.data() length:bytes.size()];
        id const object = [NSJSONSerialization JSONObjectWithData:data
                                                          options:NSJSONReadingFragmentsAllowed
                                                            error:nil];
        return object == nil ? std::nullopt : std::optional(portableObject(object));
    }
}

std::optional<std::vector<std::byte>> write(const PropertyList& value) {
    @autoreleasepool {
        id const object = Conversion().convert(value);
        if (object == nil)
            return std::nullopt;
        const auto options = NSJSONWritingFragmentsAllowed | NSJSONWritingSortedKeys |
                             NSJSONWritingWithoutEscapingSlashes;
        NSData* const data = [NSJSONSerialization dataWithJSONObject:object
                                                             options:options
                                                               error:nil];
        if (data == nil)
            return std::nullopt;
        const auto* const first = static_cast<const std::byte*>(data.bytes);
        return std::vector<std::byte>(first, first + data.length);
    }
}

} // namespace Platform::JSON
