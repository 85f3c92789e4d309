// A theme file from anybody. What is accepted is written again with the same bytes each time, and
// every font in it is some font.

#include "CorbelKit/Coding/PropertyListCoder.h"
#include "CorbelKit/Formats/Theme.h"

#include <cstdlib>

using CorbelKit::PropertyListDecoder;
using CorbelKit::PropertyListEncoder;
using Themes = std::vector<CorbelKit::Theme>;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto themes =
        PropertyListDecoder::shared().decode<Themes>(std::as_bytes(std::span(data, size)));
    if (!themes)
        return 0;
    const auto written = PropertyListEncoder::binary().encode(*themes);
    if (!written)
        std::abort();
    const auto back = PropertyListDecoder::shared().decode<Themes>(*written);
    if (!back || *PropertyListEncoder::binary().encode(*back) != *written)
        std::abort();
    for (const auto& theme : *themes) {
        if (theme.textFont.platformFont().postScriptName.empty())
            std::abort();
    }
    return 0;
}
