#include "Platform/Linux/Files/FileSystemEvents/FolderWalk.h"

#include <utility>

namespace Platform {
namespace {

constexpr std::size_t mostOpenFolders = 32;

} // namespace

void FolderWalk::enter(int folder, FileHandle handle) {
    levels_.push_back({.folder = folder, .listing = FolderListing(std::move(handle)), .names = {}});
    if (levels_.size() > mostOpenFolders)
        close(levels_[levels_.size() - 1 - mostOpenFolders]);
}

std::optional<FolderWalk::Subfolder> FolderWalk::next() {
    while (!levels_.empty()) {
        auto& level = levels_.back();
        if (auto name = nextName(level)) {
            return Subfolder{.parent = level.folder,
                             .parentDescriptor =
                                 level.listing ? level.listing->fileDescriptor() : -1,
                             .name = std::move(*name)};
        }
        levels_.pop_back();
    }
    return std::nullopt;
}

std::optional<std::string> FolderWalk::nextName(Level& level) {
    if (!level.listing) {
        if (level.names.empty())
            return std::nullopt;
        auto name = std::move(level.names.back());
        level.names.pop_back();
        return name;
    }
    while (const auto* entry = level.listing->next()) {
        if (entry->d_type == DT_DIR || entry->d_type == DT_UNKNOWN)
            return entry->d_name;
    }
    if (const int code = level.listing->failure(); code != 0)
        failures_.push_back({.folder = level.folder, .code = code});
    return std::nullopt;
}

void FolderWalk::close(Level& level) {
    if (!level.listing)
        return;
    std::vector<std::string> names;
    while (auto name = nextName(level))
        names.push_back(std::move(*name));
    level.names = std::move(names);
    level.listing.reset();
}

} // namespace Platform
