#include "Platform/URL.h"

#include <glib.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <memory>

namespace Platform {
namespace {

constexpr std::string_view fileScheme = "file:";

struct ReleaseBytes {
    void operator()(GBytes* bytes) const { g_bytes_unref(bytes); }
};

using ByteSet = std::array<bool, 256>;

constexpr ByteSet letterDigitsAnd(std::string_view others) {
    ByteSet set{};
    for (unsigned char byte = '0'; byte <= '9'; ++byte)
        set[byte] = true;
    for (unsigned char byte = 'a'; byte <= 'z'; ++byte)
        set[byte] = set[byte - ('a' - 'A')] = true;
    for (const char byte : others)
        set[static_cast<unsigned char>(byte)] = true;
    return set;
}

// RFC 3986: a path holds "pchar" and slashes; a whole URL holds these, escapes and delimiters.
constexpr ByteSet pathBytes = letterDigitsAnd("-._~!$&'()*+,;=:@/");
constexpr ByteSet urlBytes = letterDigitsAnd("-._~!$&'()*+,;=:@/%?#[]");

bool holdsOnly(std::string_view text, const ByteSet& set) {
    return std::ranges::all_of(text,
                               [&](char byte) { return set[static_cast<unsigned char>(byte)]; });
}

// Most names need no escape and hold none: these two are met for every entry of a folder.

void appendEscaped(std::string& text, std::string_view path) {
    if (holdsOnly(path, pathBytes)) {
        text += path;
        return;
    }
    // GLib's function is of no use here: it takes a NUL for a byte that needs no escape.
    constexpr std::string_view digits = "0123456789ABCDEF";
    for (const char byte : path) {
        const auto value = static_cast<unsigned char>(byte);
        if (pathBytes[value]) {
            text += byte;
        } else {
            text.append({'%', digits[value >> 4U], digits[value & 15U]});
        }
    }
}

std::string decoded(std::string_view path) {
    if (path.find('%') == std::string_view::npos)
        return std::string(path);
    const std::unique_ptr<GBytes, ReleaseBytes> bytes(
        g_uri_unescape_bytes(path.data(), static_cast<gssize>(path.size()), nullptr, nullptr));
    if (!bytes)
        return std::string(path);
    gsize size = 0;
    const auto* data = static_cast<const char*>(g_bytes_get_data(bytes.get(), &size));
    return {data, size};
}

std::string_view withoutTrailingSlashes(std::string_view path) {
    while (path.size() > 1 && path.ends_with('/'))
        path.remove_suffix(1);
    return path;
}

bool wantsTrailingSlash(std::string_view path, URL::DirectoryHint hint) {
    return hint == URL::DirectoryHint::isDirectory ||
           (hint == URL::DirectoryHint::inferFromPath && (path.empty() || path.ends_with('/')));
}

/// The text of a URL, cut around its path.
struct Parts {
    explicit Parts(std::string_view text) {
        const auto begin = beginOfPath(text);
        const auto* const end = std::find_if(text.data() + begin, text.data() + text.size(),
                                             [](char byte) { return byte == '?' || byte == '#'; });
        before = text.substr(0, begin);
        path = text.substr(begin, static_cast<std::size_t>(end - text.data()) - begin);
        after = text.substr(begin + path.size());
    }

    static std::size_t beginOfPath(std::string_view text) {
        if (text.starts_with("file:///"))
            return std::string_view("file://").size();
        const auto begin = text.find(':') + 1;
        if (!text.substr(begin).starts_with("//"))
            return begin;
        return std::min(text.find_first_of("/?#", begin + 2), text.size());
    }

    std::string_view before;
    std::string_view path;
    std::string_view after;
};

/// The current folder, ending in a slash.
std::string currentFolder() {
    std::error_code error;
    const auto folder = std::filesystem::current_path(error);
    // A current folder that was removed has no path any more, but it still has this name.
    return error ? "/proc/self/cwd/" : (folder / "").string();
}

} // namespace

URL URL::file(std::string_view path, DirectoryHint hint) {
    std::string text = "file://";
    text.reserve(text.size() + path.size() + 1);
    if (!path.starts_with('/'))
        appendEscaped(text, currentFolder());
    const auto name = withoutTrailingSlashes(path);
    appendEscaped(text, name);
    if (wantsTrailingSlash(path, hint) && !text.ends_with('/'))
        text += '/';
    return URL(std::move(text));
}

std::optional<URL> URL::parse(std::string_view text) {
    if (!holdsOnly(text, urlBytes))
        return std::nullopt;
    URL url{std::string(text)};
    if (g_uri_is_valid(url.text_.c_str(), G_URI_FLAGS_ENCODED, nullptr) == FALSE)
        return std::nullopt;
    // No file has a name with a NUL in it; the system would take such a path for a shorter one.
    if (url.isFileURL() && text.find("%00") != std::string_view::npos)
        return std::nullopt;
    return url;
}

bool URL::isFileURL() const {
    return text_.size() >= fileScheme.size() &&
           g_ascii_strncasecmp(text_.data(), fileScheme.data(), fileScheme.size()) == 0;
}

bool URL::hasDirectoryPath() const {
    return Parts(text_).path.ends_with('/');
}

std::string URL::path() const {
    return decoded(withoutTrailingSlashes(Parts(text_).path));
}

std::string URL::lastPathComponent() const {
    const auto path = withoutTrailingSlashes(Parts(text_).path);
    return decoded(path == "/" ? path : path.substr(path.rfind('/') + 1));
}

URL URL::appending(std::string_view component, DirectoryHint hint) const {
    const Parts parts(text_);
    std::string text;
    text.reserve(text_.size() + component.size() + 2);
    text.append(parts.before).append(withoutTrailingSlashes(parts.path));
    if (!text.ends_with('/') || parts.path.empty())
        text += '/';
    const auto isFolder = wantsTrailingSlash(component, hint);
    component.remove_prefix(std::min(component.find_first_not_of('/'), component.size()));
    appendEscaped(text, withoutTrailingSlashes(component));
    if (isFolder && !text.ends_with('/'))
        text += '/';
    return URL(std::move(text.append(parts.after)));
}

URL URL::deletingLastPathComponent() const {
    const Parts parts(text_);
    const auto path = withoutTrailingSlashes(parts.path);
    std::string text(parts.before);
    text.append(path.substr(0, path.rfind('/') + 1)).append(parts.after);
    return URL(std::move(text));
}

} // namespace Platform
