#include "CorbelKit/Coding/CodingError.h"

namespace CorbelKit {

std::string CodingError::description() const {
    std::string text;
    for (const auto& key : codingPath) {
        if (key.intValue) {
            text += '[' + std::to_string(*key.intValue) + ']';
        } else {
            text.append(text.empty() ? "" : ".").append(key.stringValue);
        }
    }
    return text.append(text.empty() ? "" : ": ").append(debugDescription);
}

} // namespace CorbelKit
