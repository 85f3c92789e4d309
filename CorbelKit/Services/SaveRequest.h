#pragma once

#include "Platform/Expected.h"
#include "Platform/URL.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string_view>

namespace CorbelKit {

/// A save from its request to its end. Those of one file are served one at a time, and none after
/// one that was requested later: what a save past the queue has written, no older one replaces that
/// still waits there. Callable on any thread.
class SaveRequest {
    struct Private {
        explicit Private() = default;
    };

public:
    /// What the file is to hold, valid as long as the function; or why that cannot be.
    using Encode = std::function<Platform::Expected<std::span<const std::byte>>()>;

    /// The latest one of its file. The reason, for the process activity, outlives it.
    static std::shared_ptr<SaveRequest> make(Platform::URL url, Encode encode,
                                             std::string_view reason);

    /// For `make`.
    SaveRequest(Private, Platform::URL url, Encode encode, std::string_view reason);

    /// Encodes and writes, on this thread, unless that was done; gives the failure either way.
    std::optional<Platform::Error> serve();

    /// Serves, in order, what was requested of the file so far, for one who is about to read it.
    static void serveAll(const Platform::URL& url);

    /// Whether the next save of the file sets aside what is there.
    static void setAsideNext(const Platform::URL& url, bool setsAside);

private:
    class File;

    std::optional<Platform::Error> save() const;
    std::optional<Platform::Error> makeRoom(const Platform::URL& file) const;

    const Platform::URL url_;
    const std::string_view reason_;
    const std::shared_ptr<File> file_;
    std::uint64_t number_ = 0;

    // With the file's turn.
    Encode encode_; // empty once served
    std::optional<Platform::Error> failure_;
};

} // namespace CorbelKit
