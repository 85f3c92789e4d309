#pragma once

#include "Platform/Expected.h"
#include "Platform/URL.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What the file system holds, and where its well-known folders are. Callable on any thread.
namespace Platform::FileManager {

/// Whether an item exists at the URL's path; a symbolic link counts as what it leads to.
bool fileExists(const URL& url);

/// The folder's immediate entries, hidden ones included, "." and ".." not, in the order in which
/// the file system gives them. Entries are never opened: an entry is a folder URL only where the
/// listing itself says so. Absent when the folder is missing or cannot be listed.
std::optional<std::vector<URL>> contentsOfDirectory(const URL& folder);

/// What a listing leaves out, as a set. The values are those of NSDirectoryEnumerationOptions.
enum class ListingOptions : unsigned {
    skipsSubdirectoryDescendants = 1U << 0U, ///< always so: a listing is of one folder
    skipsHiddenFiles = 1U << 2U,             ///< what the system does not show, by name or by flag
    skipsDescendantsAndHiddenFiles = skipsSubdirectoryDescendants | skipsHiddenFiles,
};

/// Whether the option is in the set.
constexpr bool contains(ListingOptions options, ListingOptions option) {
    return (static_cast<unsigned>(options) & static_cast<unsigned>(option)) != 0;
}

/// Hands over the folder's immediate entries, "." and ".." not, in the order in which the file
/// system gives them: each one's name, as bytes, and whether it is itself a folder (a link is
/// none). Gives the reason where the folder cannot be listed; some entries may have been handed
/// over by then. The folder's path is absolute, bytes, and of any length.
std::optional<Error>
forEachEntry(const std::string& folder, ListingOptions options,
             const std::function<void(std::string_view name, bool isFolder)>& visit);
/// The URL of what the file's path leads to when every symbolic link on the way is followed, as far
/// as the path exists. A folder URL stays one. The URL itself where it is no file's or nothing can
/// be found.
URL resolvingSymlinksInPath(const URL& url);

/// The home folder that the password database holds for the real user ID of the process. Absent
/// when the database has no such entry.
std::optional<URL> homeDirectoryForRealUser();

/// The library folders of the local domain (all users of this machine), best first.
std::vector<URL> localLibraryDirectories();

/// Where this system looks for what is to be started by itself, besides where it keeps launchd's
/// jobs, in the order of their mention, as paths without "." and ".."; none on macOS. On Linux the
/// environment variable CORBEL_STARTUP_FOLDERS names them: absolute paths with colons in between, a
/// leading "~/" being the user's home; what is no such path is passed over. None need exist.
std::vector<URL> startupFolders();

/// The name under which the user knows the item, in the user's language where it has such a name,
/// as applications do; else the last component of its path. The item need not exist.
std::string displayName(const URL& url);

/// Where the maker's applications keep the user's data, each in a folder of its own. Neither need
/// exist. Absent where the user has no home.
std::optional<URL> applicationSupportDirectory();

/// Makes what is missing of the folder and of those above it, for the user alone. False when it is
/// not there in the end.
bool createDirectory(const URL& folder);

/// The path of the folder from which relative paths are taken.
std::string currentDirectoryPath();

} // namespace Platform::FileManager
