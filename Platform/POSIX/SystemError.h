#pragma once

#include "Platform/Expected.h"

#include <cerrno>
#include <string>
#include <system_error>

namespace Platform {

/// The system's own words for an `errno` value, after what they are about.
inline Error systemError(const std::string& subject, int code) {
    return {subject + ": " + std::error_code(code, std::system_category()).message()};
}

/// Calls the system again as long as a signal cuts the call short.
template <class Call>
auto uninterrupted(const Call& call) {
    auto result = call();
    while (result < 0 && errno == EINTR)
        result = call();
    return result;
}

} // namespace Platform
