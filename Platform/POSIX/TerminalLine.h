#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace Platform {

/// The texts that are not empty, as one line for a terminal, without its end. What would act on
/// the terminal shows as a space.
std::string terminalLine(std::initializer_list<std::string_view> texts, std::string_view separator);

} // namespace Platform
