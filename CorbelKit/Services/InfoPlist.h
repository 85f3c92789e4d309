#pragma once

#include "CorbelKit/Coding/Decoder.h"
#include "CorbelKit/Coding/Encoder.h"
#include "Platform/Bundle.h"
#include "Platform/URL.h"

#include <optional>
#include <string>

namespace CorbelKit {

/// What a bundle's information property list says of what the bundle is. A plain value.
struct InfoPlist {
    std::string build;                     ///< the version of the build (CFBundleVersion)
    std::optional<std::string> executable; ///< the name of its file
    std::optional<std::string> version;    ///< as it is shown to the user
    std::string identifier;                ///< in reverse-DNS form

    /// Of the running application. Absent, as of any bundle, where there is no such list, or it has
    /// no build or identifier, or one of the four is no text. Callable on any thread.
    static std::optional<InfoPlist> ofMainBundle();
    /// Of any bundle that is open.
    static std::optional<InfoPlist> of(const Platform::Bundle& bundle);

    /// Of a bundle on disk, which is not loaded.
    static std::optional<InfoPlist> at(const Platform::URL& bundleURL);

    static InfoPlist decode(const Decoder& decoder);
    void encode(Encoder& encoder) const;

    friend bool operator==(const InfoPlist&, const InfoPlist&) = default;
};

} // namespace CorbelKit
