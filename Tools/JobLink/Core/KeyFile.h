#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace JobLink {

/// A file of sections and keys as desktop entries (Desktop Entry 1.5) and units (systemd.syntax)
/// are: whatever is neither a section nor a key is passed over.
class KeyFile {
public:
    /// Whether a backslash at the end of a line joins it with the next one, as in units.
    enum class Lines { joined, apart };

    static KeyFile read(std::string_view text, Lines lines);

    /// What section the line, without blanks around it, begins; absent where it begins none.
    static std::optional<std::string_view> sectionBegunBy(std::string_view line);

    /// The last one; absent where the section has no such key. Its escapes stand as they are.
    std::optional<std::string_view> value(std::string_view section, std::string_view key) const;

    /// In their order, since the last one that is empty, which takes back those before.
    std::vector<std::string_view> values(std::string_view section, std::string_view key) const;

    /// "true", or what systemd takes for that.
    bool isTrue(std::string_view section, std::string_view key) const;

private:
    struct Entry {
        std::string section;
        std::string key;
        std::string value;
    };

    std::vector<Entry> entries_;
};

} // namespace JobLink
