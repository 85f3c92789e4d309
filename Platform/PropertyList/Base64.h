#pragma once

#include "Platform/PropertyList/Events.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace Platform::PropertyLists {

/// Base64 (RFC 4648) that comes in pieces, with white space anywhere. It must be padded.
class Base64Decoder {
public:
    /// Passes on what is decoded; false on a character out of place.
    bool append(std::string_view piece, Receiver& receiver);

    bool isComplete() const { return digits_ == 0; }

private:
    bool take(char character);

    std::string decoded_;
    std::uint32_t quantum_ = 0;
    unsigned digits_ = 0; ///< of the quantum, with its padding
    unsigned padding_ = 0;
};

} // namespace Platform::PropertyLists
