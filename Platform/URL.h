#pragma once

#include <compare>
#include <optional>
#include <string>
#include <string_view>

namespace Platform {

/// A URL as RFC 3986 defines it, chiefly the URL of a file. A plain value.
///
/// A path is bytes, as the file system has it: every byte that the URL syntax does not allow,
/// text or not, stands percent-escaped in `absoluteString` and comes back from `path` unchanged.
/// Whether a file URL means a folder is decided by its trailing slash alone; the file system is
/// never asked.
class URL {
public:
    /// Whether a path means a folder.
    enum class DirectoryHint {
        isDirectory,
        notDirectory,
        inferFromPath, ///< a folder when the path ends in a slash
    };

    /// The URL of a file. A relative path is taken from the current folder.
    static URL file(std::string_view path, DirectoryHint hint = DirectoryHint::inferFromPath);

    /// Absent when `text` is not an absolute URL.
    static std::optional<URL> parse(std::string_view text);

    /// Absent when `text` is neither an absolute URL nor leads from the base to one (RFC 3986,
    /// section 5.2).
    static std::optional<URL> parse(std::string_view text, const URL& base);

    /// The text of the whole URL, with its escapes.
    const std::string& absoluteString() const { return text_; }

    /// Whether the scheme is "file".
    bool isFileURL() const;
    /// Whether it means a folder: whether its path ends in a slash.
    bool hasDirectoryPath() const;

    /// The path with its escapes decoded and without a trailing slash (the root stays "/").
    std::string path() const;

    /// The decoded last component of the path; "/" for the root, empty where there is no path.
    std::string lastPathComponent() const;

    /// The URL with a slash, where one is wanting, and the component, or several with slashes
    /// between them, after its path.
    URL appending(std::string_view component,
                  DirectoryHint hint = DirectoryHint::inferFromPath) const;

    /// The folder that holds the item, as a folder URL; the root is its own parent.
    URL deletingLastPathComponent() const;

    friend bool operator==(const URL&, const URL&) = default;
    friend std::strong_ordering operator<=>(const URL&, const URL&) = default;

private:
    explicit URL(std::string text)
        : text_(std::move(text)) {}

    std::string text_;
};

} // namespace Platform
