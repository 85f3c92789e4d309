#include "Platform/macOS/PropertyListObjects.h"

#include <span>

namespace Platform {
namespace {

NSData* binaryForm(id object) {
    @try {
        return [NSPropertyListSerialization dataWithPropertyList:object
                                                          format:NSPropertyListBinaryFormat_v1_0
                                                         options:0
                                                           error:nil];
    } @catch (NSException*) {
        return nil;
    }
}

} // namespace

id foundationObject(const PropertyList& value) {
    const auto bytes = value.write(PropertyList::Format::binary);
    if (!bytes)
        return nil;
    return [NSPropertyListSerialization propertyListWithData:[NSData dataWithBytes:bytes->data()
                                                                            length:bytes->size()]
                                                     options:NSPropertyListImmutable
                                                      format:nil
                                                       error:nil];
}

std::optional<PropertyList> portableValue(id object, PropertyList::Limits limits) {
    NSData* const bytes = object == nil ? nil : binaryForm(object);
    if (bytes == nil)
        return std::nullopt;
    return PropertyList::read({static_cast<const std::byte*>(bytes.bytes), bytes.length}, limits);
}

} // namespace Platform
