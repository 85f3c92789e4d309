#include "Platform/URL.h"

#include "Platform/FileManager.h"
#include "Platform/Native/URLSyntax.h"

#include <algorithm>
#include <array>
#include <vector>

namespace Platform {
namespace {

constexpr std::string_view fileScheme = "file:";

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

constexpr std::string_view hexDigits = "0123456789abcdefABCDEF";

unsigned hexValue(char digit) {
    const auto index = hexDigits.find(digit);
    return static_cast<unsigned>(index < 16 ? index : index - 6);
}

bool holdsWholeEscapes(std::string_view text) {
    for (auto escape = text.find('%'); escape != std::string_view::npos; escape = text.find('%')) {
        text.remove_prefix(escape + 1);
        const auto digits = text.substr(0, 2);
        if (digits.size() < 2 || digits.find_first_not_of(hexDigits) != std::string_view::npos)
            return false;
    }
    return true;
}

/// All escapes are whole: no URL is made otherwise.
std::string decoded(std::string_view path) {
    std::string bytes;
    bytes.reserve(path.size());
    for (auto escape = path.find('%'); escape != std::string_view::npos; escape = path.find('%')) {
        bytes += path.substr(0, escape);
        bytes += static_cast<char>(hexValue(path[escape + 1]) << 4U | hexValue(path[escape + 2]));
        path.remove_prefix(escape + 3);
    }
    return bytes.append(path);
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

/// RFC 3986, section 5.2.4.
std::string withoutDotSegments(std::string_view path) {
    std::vector<std::string_view> names;
    for (bool isLast = false; !isLast;) {
        const auto end = std::min(path.find('/'), path.size());
        const auto name = path.substr(0, end);
        isLast = end == path.size();
        path.remove_prefix(std::min(end + 1, path.size()));
        if (name == ".." && names.size() > 1)
            names.pop_back();
        if (name != "." && name != "..") {
            names.push_back(name);
        } else if (isLast) {
            names.emplace_back(); // it meant a folder
        }
    }
    std::string text;
    for (const auto& name : names)
        text.append(&name == names.data() ? "" : "/").append(name);
    return text;
}

} // namespace

URL URL::file(std::string_view path, DirectoryHint hint) {
    std::string text = "file://";
    text.reserve(text.size() + path.size() + 1);
    if (!path.starts_with('/')) {
        appendEscaped(text, FileManager::currentDirectoryPath());
        if (!text.ends_with('/'))
            text += '/';
    }
    const auto name = withoutTrailingSlashes(path);
    appendEscaped(text, name);
    if (wantsTrailingSlash(path, hint) && !text.ends_with('/'))
        text += '/';
    return URL(std::move(text));
}

std::optional<URL> URL::parse(std::string_view text) {
    if (!holdsOnly(text, urlBytes) || !holdsWholeEscapes(text))
        return std::nullopt;
    URL url{std::string(text)};
    if (!isAbsoluteURL(url.text_))
        return std::nullopt;
    // No file has a name with a NUL in it; the system would take such a path for a shorter one.
    if (url.isFileURL() && text.find("%00") != std::string_view::npos)
        return std::nullopt;
    return url;
}

std::optional<URL> URL::parse(std::string_view text, const URL& base) {
    if (auto url = parse(text))
        return url;
    const std::string_view baseText = base.text_;
    const auto scheme = baseText.substr(0, baseText.find(':') + 1);
    const bool hasAuthority = text.starts_with("//");
    const Parts parent(baseText.substr(0, baseText.find('#')));
    const auto absolute = std::string(scheme).append(text);
    const Parts relative(absolute);
    std::string path(relative.path);
    std::string_view query;
    if (!hasAuthority && path.empty()) {
        path = parent.path;
        query = relative.after.starts_with('?') ? "" : parent.after;
    } else if (!hasAuthority && !path.starts_with('/')) {
        path.insert(0,
                    parent.path.empty() ? "/" : parent.path.substr(0, parent.path.rfind('/') + 1));
    }
    std::string whole(hasAuthority ? relative.before : parent.before);
    return parse(whole.append(withoutDotSegments(path)).append(query).append(relative.after));
}

bool URL::isFileURL() const {
    return std::ranges::equal(
        std::string_view(text_).substr(0, fileScheme.size()), fileScheme,
        [](char byte, char lower) { return byte == lower || byte + ('a' - 'A') == lower; });
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
