#include "Platform/Linux/Desktop/DesktopEntries.h"

#include <glib.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <memory>
#include <span>
#include <system_error>
#include <utility>
#include <vector>

namespace Platform::DesktopEntries {
namespace {

namespace fs = std::filesystem;

template <auto release>
struct Release {
    void operator()(auto* handle) const { release(handle); }
};

using Text = std::unique_ptr<char, Release<g_free>>;
using TextList = std::unique_ptr<char*, Release<g_strfreev>>;

constexpr std::string_view suffix = ".desktop";

std::string textOf(const Text& text) {
    return text ? std::string(text.get()) : std::string();
}

/// Best first.
std::vector<fs::path> folders() {
    std::vector<fs::path> result{fs::path(g_get_user_data_dir()) / "applications"};
    for (const char* const* folder = g_get_system_data_dirs(); *folder != nullptr; ++folder)
        result.push_back(fs::path(*folder) / "applications");
    return result;
}

class Entry {
public:
    /// Absent when the file is no entry of an application that is there.
    static std::optional<Entry> read(const fs::path& path) {
        std::error_code ignored;
        Entry entry;
        const bool isRead = fs::is_regular_file(path, ignored) &&
                            g_key_file_load_from_file(entry.file_.get(), path.c_str(),
                                                      G_KEY_FILE_NONE, nullptr) != FALSE;
        if (!isRead || entry.text("Type") != "Application" || entry.text("Hidden") == "true")
            return std::nullopt;
        return entry;
    }

    std::string text(const char* key) const {
        return textOf(
            Text(g_key_file_get_string(file_.get(), G_KEY_FILE_DESKTOP_GROUP, key, nullptr)));
    }

    std::string localizedName() const {
        return textOf(Text(g_key_file_get_locale_string(
            file_.get(), G_KEY_FILE_DESKTOP_GROUP, G_KEY_FILE_DESKTOP_KEY_NAME, nullptr, nullptr)));
    }

    /// The program that the entry starts, where it starts nothing but this: an interpreter's
    /// window belongs to its script.
    fs::path program() const {
        int count = 0;
        char** list = nullptr;
        if (g_shell_parse_argv(text(G_KEY_FILE_DESKTOP_KEY_EXEC).c_str(), &count, &list, nullptr) ==
            FALSE)
            return {};
        const TextList words(list);
        const auto arguments = std::span(list, static_cast<std::size_t>(count)).subspan(1);
        if (!std::ranges::all_of(arguments, [](const char* word) { return *word == '%'; }))
            return {};
        std::error_code ignored;
        return fs::canonical(textOf(Text(g_find_program_in_path(*list))), ignored);
    }

private:
    Entry() = default;

    std::unique_ptr<GKeyFile, Release<g_key_file_unref>> file_{g_key_file_new()};
};

using Paths = std::map<std::string, fs::path, std::less<>>;

/// An entry in a subfolder has the folder's name and a hyphen in its identifier. An earlier entry
/// hides a later one of the same identifier.
void addEntries(const fs::path& folder, Paths& paths) {
    std::error_code error;
    using Iterator = fs::recursive_directory_iterator;
    for (Iterator item(folder, fs::directory_options::skip_permission_denied, error), end;
         !error && item != end; item.increment(error)) {
        if (item->path().extension() != suffix)
            continue;
        auto identifier = item->path().lexically_relative(folder).replace_extension().string();
        std::ranges::replace(identifier, '/', '-');
        paths.try_emplace(std::move(identifier), item->path());
    }
}

Paths installedEntries() {
    Paths paths;
    for (const auto& folder : folders())
        addEntries(folder, paths);
    return paths;
}

fs::path programOf(pid_t process) {
    std::error_code ignored;
    if (process <= 0)
        return {};
    return fs::read_symlink(fs::path("/proc") / std::to_string(process) / "exe", ignored);
}

enum class Match { none, program, identifier, windowClass };

class Matcher {
public:
    explicit Matcher(const FrontWindow& window)
        : window_(window)
        , program_(programOf(window.process)) {}

    Match match(const std::string& identifier, const Entry& entry) const {
        const auto claimed = entry.text("StartupWMClass");
        if (!claimed.empty() && (claimed == window_.className || claimed == window_.instanceName))
            return Match::windowClass;
        if (g_ascii_strcasecmp(identifier.c_str(), window_.className.c_str()) == 0)
            return Match::identifier;
        if (!program_.empty() && entry.program() == program_)
            return Match::program;
        return Match::none;
    }

private:
    const FrontWindow& window_;
    fs::path program_;
};

} // namespace

std::optional<std::string> pathForIdentifier(std::string_view identifier) {
    if (identifier.empty() || identifier.find('/') != std::string_view::npos)
        return std::nullopt;
    for (const auto& folder : folders()) {
        const auto path = folder / std::string(identifier).append(suffix);
        std::error_code ignored;
        if (fs::exists(path, ignored))
            return Entry::read(path) ? std::optional(path.string()) : std::nullopt;
    }
    return std::nullopt;
}

bool isInstalled(std::string_view path) {
    if (!path.ends_with(suffix))
        return false;
    const auto folder = fs::path(path).lexically_normal().parent_path();
    return std::ranges::any_of(folders(), [&](const fs::path& installed) {
        return folder == installed.lexically_normal();
    });
}

std::optional<std::string> localizedName(std::string_view path) {
    const auto entry = isInstalled(path) ? Entry::read(path) : std::nullopt;
    auto name = entry ? entry->localizedName() : std::string();
    return name.empty() ? std::nullopt : std::optional(std::move(name));
}

std::optional<std::string> localizedName(const FrontWindow& window) {
    const Matcher matcher(window);
    auto best = Match::none;
    std::string name;
    for (const auto& [identifier, path] : installedEntries()) {
        const auto entry = Entry::read(path);
        if (!entry)
            continue;
        const auto match = matcher.match(identifier, *entry);
        if (match <= best)
            continue;
        best = match;
        name = entry->localizedName();
        if (best == Match::windowClass)
            break;
    }
    return name.empty() ? std::nullopt : std::optional(std::move(name));
}

} // namespace Platform::DesktopEntries
