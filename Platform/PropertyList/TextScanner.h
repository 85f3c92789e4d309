#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace Platform::PropertyLists {

/// The tokens of the old-style form. Each operation first passes over white space and comments.
class TextScanner {
public:
    /// `text` is UTF-8.
    explicit TextScanner(std::string_view text)
        : rest_(text) {}

    /// False as well when a comment does not end.
    bool atEnd();

    /// Takes the character when it comes next.
    bool take(char character);

    /// A quoted or unquoted string; absent when none comes next, or it has no end.
    std::optional<std::string> string();

    /// What stands between the angle brackets, the first of which is taken.
    std::optional<std::string> data();

    /// Of what failed: whether it came to the end of the text, and might do otherwise in a longer
    /// one.
    bool isCutOff() const { return isUnended_ || rest_.size() < longestMark; }

private:
    static constexpr std::size_t longestMark = 2; // that says what comes: "//", "\\U"

    bool skip();
    std::optional<std::string> quoted(char quote);
    std::string unquoted();
    bool escape(std::string& text);
    bool octal(std::string& text);
    bool unicode(std::string& text);
    std::optional<unsigned> number(unsigned base, std::size_t mostDigits);

    std::string_view rest_;
    bool isUnended_ = false; // a comment, or a quoted string
};

} // namespace Platform::PropertyLists
