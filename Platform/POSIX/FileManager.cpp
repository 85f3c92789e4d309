#include "Platform/FileManager.h"

#include "Platform/POSIX/FileSystemPath.h"
#include "Platform/POSIX/FolderListing.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <system_error>

namespace Platform::FileManager {
namespace {

constexpr int folderToList = O_RDONLY | O_DIRECTORY | O_NONBLOCK | O_CLOEXEC;

URL::DirectoryHint hintOf(const dirent& entry) {
    return entry.d_type == DT_DIR ? URL::DirectoryHint::isDirectory
                                  : URL::DirectoryHint::notDirectory;
}

} // namespace

bool fileExists(const URL& url) {
    const auto path = fileSystemPath(url);
    struct stat status{};
    return path && stat(path->c_str(), &status) == 0;
}

std::optional<std::vector<URL>> contentsOfDirectory(const URL& folder) {
    const auto path = fileSystemPath(folder);
    if (!path)
        return std::nullopt;
    FolderListing listing(FileHandle(open(path->c_str(), folderToList)));
    std::vector<URL> entries;
    while (const auto* entry = listing.next())
        entries.push_back(folder.appending(entry->d_name, hintOf(*entry)));
    if (listing.failure() != 0)
        return std::nullopt;
    return entries;
}

URL resolvingSymlinksInPath(const URL& url) {
    const auto path = fileSystemPath(url);
    if (!path)
        return url;
    std::error_code error;
    const auto resolved = std::filesystem::weakly_canonical(*path, error);
    if (error)
        return url;
    return URL::file(resolved.native(), url.hasDirectoryPath() ? URL::DirectoryHint::isDirectory
                                                               : URL::DirectoryHint::notDirectory);
}

std::optional<URL> homeDirectoryForRealUser() {
    constexpr std::size_t largestEntry = std::size_t{1} << 20;
    passwd entry{};
    passwd* found = nullptr;
    std::vector<char> texts(1024);
    int error = 0;
    while ((error = getpwuid_r(getuid(), &entry, texts.data(), texts.size(), &found)) != 0) {
        if (error == ERANGE && texts.size() < largestEntry) {
            texts.resize(texts.size() * 2);
        } else if (error != EINTR) {
            return std::nullopt;
        }
    }
    if (found == nullptr || *found->pw_dir != '/')
        return std::nullopt;
    return URL::file(found->pw_dir, URL::DirectoryHint::isDirectory);
}

bool createDirectory(const URL& folder) {
    constexpr mode_t privateFolder = 0700;
    const auto path = fileSystemPath(folder);
    if (!path)
        return false;
    for (auto end = path->find('/', 1); end != std::string::npos; end = path->find('/', end + 1))
        mkdir(path->substr(0, end).c_str(), privateFolder); // a failure shows in the end
    mkdir(path->c_str(), privateFolder);
    struct stat status{};
    return stat(path->c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

} // namespace Platform::FileManager
