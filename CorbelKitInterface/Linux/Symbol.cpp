#include "CorbelKitInterface/Linux/Symbol.h"

#include "CorbelKitInterface/Linux/Toolkit.h"

#include <utility>

namespace CorbelKit {

std::vector<std::string> symbolLayers(const std::string& name) {
    constexpr auto suffix = "-symbolic"; // in the colour of text
    const auto theme = Toolkit::iconTheme();
    std::vector<std::string> layers;
    for (int number = 1;; ++number) {
        auto icon = name + "." + std::to_string(number) + suffix;
        if (!theme->has_icon(icon))
            return layers;
        layers.push_back(std::move(icon));
    }
}

} // namespace CorbelKit
