#pragma once

#include <string>
#include <string_view>

namespace Platform {

/// A text of the main bundle's information dictionary; empty where it has none under the key.
std::string mainBundleText(std::string_view key);

} // namespace Platform
