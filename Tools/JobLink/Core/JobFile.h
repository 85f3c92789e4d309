#pragma once

#include "Tools/JobLink/Core/JobPlace.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace JobLink {

/// A job file as it was when it was looked at. A plain value.
struct JobFile {
    /// What became of its content.
    enum class Reading : std::uint8_t {
        read,
        tooLarge,   ///< for a job; `label` is known all the same, or else `isLabelKnown` is false
        unreadable, ///< to this user, or at all
        link,       ///< to another file, which may be anywhere and was not looked at
        notRegular, ///< a folder, a pipe, a device
    };

    Reading reading = Reading::unreadable;
    std::vector<std::byte> content{}; ///< all of it when `read`, else empty
    std::string label{};              ///< by which the agent excepts it: its label, or its name
    bool isLabelKnown = false;
    std::string linkTarget{}; ///< of a link, as it stands in it
    std::uint64_t size = 0;   ///< bytes
    unsigned permissions = 0; ///< the twelve bits of the mode
    unsigned owner = 0;       ///< the user's number
    unsigned group = 0;
    std::chrono::sys_seconds changed{};

    friend bool operator==(const JobFile&, const JobFile&) = default;
};

/// No job is larger.
inline constexpr std::size_t largestJob = std::size_t{1} << 20;

/// Looks at the file, opened once as an entry of its folder, without following a link; everything
/// that is given comes from that one opening. Absent where there is no such entry. Waits as long as
/// the file system does, so not for the main thread.
std::optional<JobFile> readJobFile(const JobPlace& place);

} // namespace JobLink
