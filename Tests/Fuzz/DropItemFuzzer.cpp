// A dropped item in its coded form, from anybody: as a property list in any of its forms, or as
// JSON. What is accepted must survive being coded again.

#include "CorbelKit/Coding/JSONCoder.h"
#include "CorbelKit/Coding/PropertyListCoder.h"
#include "CorbelKit/Formats/DropItem.h"

#include <cstdint>
#include <cstdlib>

using CorbelKit::DropItem;

namespace {

template <class Decoder>
void check(std::span<const std::byte> bytes, const Decoder& decoder, const auto& encoder) {
    const auto item = decoder.template decode<DropItem>(bytes);
    if (!item) {
        if (item.error().description().empty())
            std::abort();
        return;
    }
    const auto again = encoder.encode(*item);
    if (!again)
        std::abort();
    const auto back = decoder.template decode<DropItem>(*again);
    if (!back || *back != *item)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto bytes = std::as_bytes(std::span(data, size));
    check(bytes, CorbelKit::PropertyListDecoder::shared(),
          CorbelKit::PropertyListEncoder::binary());
    check(bytes, CorbelKit::JSONDecoder(), CorbelKit::JSONEncoder());
    return 0;
}
