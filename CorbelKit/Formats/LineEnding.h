#pragma once

#include <cstdint>
#include <string>

/// The line breaks of texts. Texts are bytes in UTF-8 or in any other encoding that leaves ASCII
/// alone. Callable on any thread; a text that is moved in is changed in its place where it does not
/// grow, and comes back as it was, unread by more than a search, where nothing is to be done.
namespace CorbelKit {

/// How the lines of a text end.
enum class LineEnding : std::uint8_t {
    unix,    ///< line feed
    windows, ///< carriage return, line feed
    macOS9,  ///< carriage return
};

/// With every line break, of whatever kind, made the given one. A carriage return and the line feed
/// after it are one break.
std::string converted(std::string text, LineEnding target);

/// With a pilcrow for each carriage return and for each line feed, so that the breaks of Windows
/// show as two.
std::string showingPilcrows(std::string text);

/// Without carriage returns and line feeds; nothing takes their place.
std::string withoutLineBreaks(std::string text);

} // namespace CorbelKit
