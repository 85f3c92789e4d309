#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace CorbelKit {

/// A text encoding as the user chooses it from a list. A plain value.
struct StringEncoding {
    std::string name; ///< in the user's language
    std::int64_t tag; ///< the platform's number, as in `Platform::TextServices`

    friend bool operator==(const StringEncoding&, const StringEncoding&) = default;
};

/// What the platform can read and write, sorted by name as the user's language sorts. Callable on
/// any thread.
std::vector<StringEncoding> availableStringEncodings();

/// The encoding that a file in UTF-8 claims for itself: by the first "charset=" in it, else by the
/// first "encoding=", else by its byte-order mark. 0 where it claims none that is known, where it
/// is shorter than ten UTF-16 code units or no UTF-8 at all. Reads the bytes once and copies none.
/// Callable on any thread.
std::int64_t guessEncoding(std::span<const std::byte> bytes);

} // namespace CorbelKit
