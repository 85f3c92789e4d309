#pragma once

#include <string_view>

// clang-format off: a table, one constant a line, in the order in which they are declared

namespace CorbelKit::Const {

/// Absolute paths of tools.
namespace Command {
inline constexpr std::string_view automator = "/usr/bin/automator";
inline constexpr std::string_view bash = "/bin/bash";
inline constexpr std::string_view csh = "/bin/csh";
inline constexpr std::string_view crontab = "/usr/bin/crontab";
inline constexpr std::string_view file = "/usr/bin/file";
inline constexpr std::string_view id = "/usr/bin/id";
inline constexpr std::string_view ksh = "/bin/ksh";
inline constexpr std::string_view launchctl = "/bin/launchctl";
inline constexpr std::string_view ls = "/bin/ls";
inline constexpr std::string_view mdfind = "/usr/bin/mdfind";
inline constexpr std::string_view open = "/usr/bin/open";
inline constexpr std::string_view osascript = "/usr/bin/osascript";
inline constexpr std::string_view perl = "/usr/bin/perl";
inline constexpr std::string_view php = "/usr/bin/php";
inline constexpr std::string_view python3 = "/usr/bin/python3";
inline constexpr std::string_view ruby = "/usr/bin/ruby";
inline constexpr std::string_view sh = "/bin/sh";
inline constexpr std::string_view shortcuts = "/usr/bin/shortcuts";
inline constexpr std::string_view swift = "/usr/bin/swift";
inline constexpr std::string_view tcsh = "/bin/tcsh";
inline constexpr std::string_view which = "/usr/bin/which";
inline constexpr std::string_view zsh = "/bin/zsh";
} // namespace Command

/// Sizes from which on work leaves the main thread.
namespace ThreadLimit {
inline constexpr int data = 60000;
/// Lengths of texts, in characters.
namespace String {
inline constexpr int find = 6000;
inline constexpr int syntax = 2000;
} // namespace String
} // namespace ThreadLimit

} // namespace CorbelKit::Const

// clang-format on
