#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace Platform {

/// Finds the text under one key of the top-level dictionary of a property list while its bytes
/// pass by, without building the list: memory does not grow with its depth, its width or its
/// texts. XML is read as it comes and may be of any length; the other forms can only be read
/// whole and are kept until `finish`, up to `maximumBuffered` bytes, unless their beginning shows
/// that they are none.
///
/// It accepts exactly what `PropertyList::read` accepts with the same depth. In XML and old-style
/// text the cost of the values, which are not built, does not count; in the binary form, where
/// shared references unfold, it does, to the limit that `read` has by itself. For one thread at a
/// time.
class PropertyListLookup {
public:
    /// What the reader keeps, and how deep it goes. Beyond the last two there is no answer.
    struct Limits {
        std::size_t maximumText = 1024;        ///< bytes kept of the text found; more is cut off
        std::size_t maximumBuffered = 8 << 20; ///< bytes of a binary or old-style list
        std::size_t depth = 512;               ///< containers within containers
    };

    /// @{
    /// The key is copied.
    explicit PropertyListLookup(std::string_view key);
    PropertyListLookup(std::string_view key, Limits limits);
    /// @}
    ~PropertyListLookup();
    PropertyListLookup(const PropertyListLookup&) = delete;
    PropertyListLookup& operator=(const PropertyListLookup&) = delete;
    PropertyListLookup(PropertyListLookup&&) noexcept;
    PropertyListLookup& operator=(PropertyListLookup&&) noexcept;

    /// The next bytes of the file. False once the answer is known to be absent; further bytes are
    /// then ignored.
    bool append(std::span<const std::byte> bytes);

    /// Called once, after the last bytes. Absent when the bytes are no property list, or no
    /// dictionary, or hold no text under the key.
    std::optional<std::string> finish();

private:
    class Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace Platform
