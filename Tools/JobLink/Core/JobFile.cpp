#include "Tools/JobLink/Core/JobFile.h"

#include "CorbelKit/Services/Const.h"
#include "Platform/FileHandle.h"
#include "Platform/PropertyListLookup.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <span>
#include <utility>

namespace JobLink {
namespace {

using Platform::FileHandle;

// For a label in a file that is no job any more; the agent itself reads on.
constexpr std::uint64_t mostRead = std::uint64_t{64} << 20;

int openEntry(int folder, const std::string& name) {
    int descriptor = -1;
    do {
        descriptor =
            openat(folder, name.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY | O_NOFOLLOW);
    } while (descriptor < 0 && errno == EINTR);
    return descriptor;
}

JobFile describe(const struct stat& status) {
    constexpr unsigned permissionBits = 07777;
    JobFile file;
    file.size = static_cast<std::uint64_t>(status.st_size);
    file.permissions = status.st_mode & permissionBits;
    file.owner = status.st_uid;
    file.group = status.st_gid;
    file.changed = std::chrono::sys_seconds(std::chrono::seconds(status.st_mtime));
    return file;
}

/// Of an entry that is not, or cannot be, opened.
std::optional<JobFile> describeUnopened(int folder, const std::string& name) {
    struct stat status{};
    if (fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0)
        return std::nullopt;
    auto file = describe(status);
    if (S_ISLNK(status.st_mode)) {
        std::array<char, PATH_MAX> target{};
        const auto length = readlinkat(folder, name.c_str(), target.data(), target.size());
        file.reading = JobFile::Reading::link;
        // What it leads to is a property list nowhere but among those.
        file.label = name;
        file.isLabelKnown = !name.ends_with(".plist");
        if (length > 0)
            file.linkTarget.assign(target.data(), static_cast<std::size_t>(length));
    } else if (!S_ISREG(status.st_mode)) {
        file.reading = JobFile::Reading::notRegular;
    }
    return file;
}

/// Keeps the content as far as it may be a job, and looks for the label in as much as that takes.
class Reader {
public:
    explicit Reader(FileHandle& handle)
        : handle_(handle) {}

    void readInto(JobFile& file, const std::string& name) {
        if (!readAll(file.content)) {
            file.content.clear();
            return;
        }
        file.reading = total_ > largestJob ? JobFile::Reading::tooLarge : JobFile::Reading::read;
        file.isLabelKnown = !mayHaveLabel_ || hasEnded_;
        file.label = name;
        if (!file.isLabelKnown || !mayHaveLabel_)
            return;
        if (auto label = lookup_.finish())
            file.label = std::move(*label);
    }

private:
    /// False where reading failed.
    bool readAll(std::vector<std::byte>& content) {
        std::array<std::byte, std::size_t{16} * 1024> buffer{}; // many files are read in a row
        while (total_ < mostRead && (mayHaveLabel_ || total_ <= largestJob)) {
            const auto count = handle_.read(buffer);
            if (!count)
                return false;
            hasEnded_ = *count == 0;
            if (hasEnded_)
                return true;
            total_ += *count;
            const auto piece = std::span<const std::byte>(buffer).first(*count);
            if (total_ <= largestJob) {
                content.insert(content.end(), piece.begin(), piece.end());
            } else {
                content.clear();
            }
            mayHaveLabel_ = mayHaveLabel_ && lookup_.append(piece);
        }
        return true;
    }

    FileHandle& handle_;
    Platform::PropertyListLookup lookup_{CorbelKit::Const::Key::label};
    std::uint64_t total_ = 0;
    bool mayHaveLabel_ = true;
    bool hasEnded_ = false;
};

} // namespace

std::optional<JobFile> readJobFile(const JobPlace& place) {
    const auto folder = FileHandle::openForReading(place.folder);
    if (!folder || folder->kind() != FileHandle::Kind::directory)
        return std::nullopt;
    struct stat status{};
    FileHandle handle(openEntry(folder->fileDescriptor(), place.name));
    if (handle.fileDescriptor() < 0 || fstat(handle.fileDescriptor(), &status) != 0)
        return describeUnopened(folder->fileDescriptor(), place.name);
    auto file = describe(status);
    if (S_ISREG(status.st_mode)) {
        Reader(handle).readInto(file, place.name);
    } else {
        file.reading = JobFile::Reading::notRegular;
    }
    return file;
}

} // namespace JobLink
