#pragma once

#include "Platform/Expected.h"

#include <string>
#include <system_error>

namespace Platform {

/// The system's own words for an `errno` value, after what they are about.
inline Error systemError(const std::string& subject, int code) {
    return {subject + ": " + std::error_code(code, std::system_category()).message()};
}

} // namespace Platform
