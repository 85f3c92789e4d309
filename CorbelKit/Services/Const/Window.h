#pragma once

#include "CorbelKit/Services/Const/Identifier.h"

// clang-format off: a table, one constant a line, in the order in which they are told

namespace CorbelKit::Const {

/// Windows of the main application.
namespace Window {
inline constexpr WindowIdentifier main{"MainWindow"};
inline constexpr WindowIdentifier paths{"PathsWindow"};
inline constexpr WindowIdentifier settings{"SettingsWindow"};
} // namespace Window

} // namespace CorbelKit::Const

// clang-format on
