#include "Platform/Appearance.h"

#include <algorithm>

namespace Platform {

std::optional<Appearance::Name> Appearance::bestMatch(std::initializer_list<Name> names) const {
    return name_ && std::ranges::find(names, *name_) != names.end() ? name_ : std::nullopt;
}

} // namespace Platform
