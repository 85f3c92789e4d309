#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace JobLink {

/// A file of sections and keys as desktop entries (Desktop Entry 1.5) and units (systemd.syntax)
/// are: whatever is neither a section nor a key is passed over. What a section says in several
/// places counts as said in one.
class KeyFile {
public:
    /// By what lines end, and whether a backslash at the end of one joins it with the next.
    enum class Lines {
        joined, ///< and ended by a carriage return or a NUL as well, as systemd reads all such
                ///< files
        apart   ///< and ended by nothing but newlines, as GLib reads desktop entries
    };

    static KeyFile read(std::string_view text, Lines lines);

    /// Whether the lines are certainly the same ones either way.
    static bool isReadAlike(std::string_view text);

    /// What section the line, without blanks around it, begins; absent where it begins none.
    static std::optional<std::string_view> sectionBegunBy(std::string_view line);

    /// The last one; absent where the section has no such key. Its escapes stand as they are.
    std::optional<std::string_view> value(std::string_view section, std::string_view key) const;

    /// In their order, since the last one that is empty, which takes back those before.
    std::vector<std::string_view> values(std::string_view section, std::string_view key) const;

    /// All that are not empty, in their order.
    std::vector<std::string_view> allValues(std::string_view section, std::string_view key) const;

    /// Whether all who read such files take it so: systemd has further words for that.
    bool isTrue(std::string_view section, std::string_view key) const;

private:
    struct Section {
        std::string name;
        bool isExact; ///< nothing stands behind the name, which some read as part of it
    };

    struct Entry {
        std::size_t section; ///< in `sections_`
        std::string key;
        std::string value;
    };

    bool isOf(const Entry& entry, std::string_view section, std::string_view key) const;

    std::vector<Section> sections_;
    std::vector<Entry> entries_;
};

} // namespace JobLink
