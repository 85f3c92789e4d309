#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace CorbelKit {

/// The arguments of a tool: a list as it stands, or one text, which a shell gets as its command
/// ("-c") and any other tool as its one argument. Nothing at all runs nothing.
using ToolArguments = std::variant<std::monostate, std::string, std::vector<std::string>>;

/// Whether the tool finds one line feed on its standard input, and then its end. Otherwise standard
/// input is a pipe that stays open and empty while the output is read.
enum class SendNewline : bool { no, yes };

/// Runs the tool at the absolute path and returns what it writes to standard output and standard
/// error together, up to the end of that output; the exit status is not looked at. Blocks the
/// calling thread for as long.
///
/// The output is decoded as UTF-8 in the pieces in which it is read, of at most 1024 bytes: a piece
/// that is not UTF-8 by itself is left out. A missing tool gives its path followed by
/// " does not exist"; a tool that cannot be started gives the empty text.
std::string
runTool(const ToolArguments& arguments, const std::string& executablePath, SendNewline sendNewline,
        const std::optional<std::map<std::string, std::string>>& environment = std::nullopt);

} // namespace CorbelKit
