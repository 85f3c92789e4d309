#pragma once

#include "Platform/URL.h"

#include <optional>
#include <string>
#include <vector>

/// What the file system holds, and where its well-known folders are. Callable on any thread.
namespace Platform::FileManager {

/// Whether an item exists at the URL's path; a symbolic link counts as what it leads to.
bool fileExists(const URL& url);

/// The folder's immediate entries, hidden ones included, "." and ".." not, in the order in which
/// the file system gives them. Entries are never opened: an entry is a folder URL only where the
/// listing itself says so. Absent when the folder is missing or cannot be listed.
std::optional<std::vector<URL>> contentsOfDirectory(const URL& folder);

/// The home folder that the password database holds for the real user ID of the process. Absent
/// when the database has no such entry.
std::optional<URL> homeDirectoryForRealUser();

/// The library folders of the local domain (all users of this machine), best first.
std::vector<URL> localLibraryDirectories();

/// The name under which the user knows the item, in the user's language where it has such a name,
/// as applications do; else the last component of its path. The item need not exist.
std::string displayName(const URL& url);

/// The path of the folder from which relative paths are taken.
std::string currentDirectoryPath();

} // namespace Platform::FileManager
