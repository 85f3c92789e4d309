#include "Platform/Base64.h"

#include "Platform/PropertyList/Base64.h"
#include "Platform/PropertyList/TreeBuilder.h"

#include <limits>

namespace Platform {

std::optional<PropertyList::Data> base64DecodedData(std::string_view text) {
    PropertyLists::TreeBuilder builder(std::numeric_limits<std::size_t>::max());
    PropertyLists::Base64Decoder decoder;
    if (!builder.beginText(PropertyLists::TextKind::data) || !decoder.append(text, builder) ||
        !decoder.isComplete() || !builder.endText())
        return std::nullopt;
    return std::get<PropertyList::Data>(builder.takeResult().value());
}

} // namespace Platform
