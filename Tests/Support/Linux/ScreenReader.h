#pragma once

#include <array>
#include <string>
#include <vector>

/// What is given to a screen reader.
namespace TestSupport::ScreenReader {

/// What the session bus has to be able to start.
inline constexpr auto busName = "org.a11y.Bus";
inline constexpr auto service = "/usr/libexec/at-spi-bus-launcher";

/// What the applications show, in its order. Groups without a name are left out, and what is within
/// a button.
struct Element {
    std::string role;
    std::string name = {};
    std::string description = {};
    bool hasFocus = false;
    bool canHaveFocus = false;
    bool isShown = false;
    std::array<int, 4> place = {}; ///< in the window: left, top, width, height; pixels
};

/// Empty where there is no bus for it.
std::vector<Element> elements(const std::string& sessionBusAddress);

/// A line each: role, name in quotation marks, description in parentheses, and whether it has the
/// keyboard.
std::string read(const std::string& sessionBusAddress);

} // namespace TestSupport::ScreenReader
