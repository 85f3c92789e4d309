#pragma once

#include <string>

/// What is given to a screen reader.
namespace TestSupport::ScreenReader {

/// What the session bus has to be able to start.
inline constexpr auto busName = "org.a11y.Bus";
inline constexpr auto service = "/usr/libexec/at-spi-bus-launcher";

/// What the applications show, an object a line: its role, its name in quotation marks, its
/// description in parentheses, and whether it has the keyboard. Groups without a name are not
/// lines, nor is what is within a button. Empty where there is no bus for it.
std::string read(const std::string& sessionBusAddress);

} // namespace TestSupport::ScreenReader
