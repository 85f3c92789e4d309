#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace Platform {

/// The texts that are not empty, as one line for a terminal, with its end: what would act on the
/// terminal or end the line (controls, line and paragraph separators) is shown as a space, what is
/// not UTF-8 as U+FFFD.
std::string terminalLine(std::initializer_list<std::string_view> texts, std::string_view separator);

} // namespace Platform
