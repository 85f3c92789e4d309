#include "Platform/Font.h"

#include "Platform/Native/InstalledFonts.h"
#include "Platform/UTF8.h"

#include <cmath>
#include <utility>

namespace Platform {
namespace {

bool isSize(double pointSize) {
    return std::isfinite(pointSize) && pointSize > 0;
}

// Names come out of files that anyone may have written.
bool canBeName(std::string_view name) {
    constexpr std::size_t longest = 1024;
    return !name.empty() && name.size() <= longest && name.find('\0') == std::string_view::npos &&
           UTF8::isWellFormed(name);
}

std::optional<Font> atSize(std::optional<std::string> name, double pointSize) {
    if (!name)
        return std::nullopt;
    return Font{.postScriptName = *std::move(name), .pointSize = pointSize};
}

} // namespace

std::optional<Font> Font::named(std::string_view name, double pointSize) {
    if (!isSize(pointSize) || !canBeName(name))
        return std::nullopt;
    return atSize(InstalledFonts::named(std::string(name)), pointSize);
}

std::optional<Font> Font::userFixedPitch(double pointSize) {
    if (!isSize(pointSize))
        return std::nullopt;
    return atSize(InstalledFonts::userFixedPitch(), pointSize);
}

Font Font::system(double pointSize) {
    constexpr double systemSize = 13; // as NSFont has it
    const double size = isSize(pointSize) ? pointSize : systemSize;
    return {.postScriptName = InstalledFonts::system(size).value_or(""), .pointSize = size};
}

} // namespace Platform
