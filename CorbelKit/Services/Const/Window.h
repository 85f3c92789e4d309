#pragma once

#include "CorbelKit/Services/Const/Identifier.h"

// clang-format off: a table, one constant a line, in the order in which they are declared

/// Windows of the main application.
namespace CorbelKit::Const::Window {
inline constexpr WindowIdentifier main{"MainWindow"};
inline constexpr WindowIdentifier paths{"PathsWindow"};
inline constexpr WindowIdentifier settings{"SettingsWindow"};
} // namespace CorbelKit::Const::Window

// clang-format on
