#pragma once

#include "CorbelKit/Coding/Decoder.h"
#include "CorbelKit/Coding/Encoder.h"
#include "Platform/URL.h"

#include <optional>
#include <string>
#include <variant>

namespace CorbelKit {

/// What is offered by a drag or a paste: implemented by whoever receives it, and asked on that
/// thread while it is imported.
class Transfer {
public:
    virtual ~Transfer() = default;

    /// Absent where the offer has no such form.
    virtual std::optional<std::string> plainText() const = 0;
    /// Absent where the offer has no such form.
    virtual std::optional<Platform::URL> url() const = 0;

protected:
    Transfer() = default;
    Transfer(const Transfer&) = default;
    Transfer& operator=(const Transfer&) = default;
};

/// What a view accepts from a drag or a paste: a piece of text, a file or web location, or nothing
/// usable. It is never dragged out. A plain value.
///
/// Coded as one entry, under the name of the case, whose value holds the payload under "_0".
struct DropItem {
    /// Nothing usable.
    struct None {
        friend bool operator==(None, None) = default;
    };

    /// `None` where nothing usable was offered.
    std::variant<None, std::string, Platform::URL> content;

    /// Text where there is text, else a URL.
    static DropItem import(const Transfer& transfer);

    static DropItem decode(const Decoder& decoder);
    void encode(Encoder& encoder) const;

    friend bool operator==(const DropItem&, const DropItem&) = default;
};

} // namespace CorbelKit
