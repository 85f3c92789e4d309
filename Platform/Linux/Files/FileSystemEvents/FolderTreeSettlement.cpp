#include "Platform/Linux/Files/FileSystemEvents/FolderTree.h"

#include <fcntl.h>

#include <cerrno>
#include <utility>

namespace Platform {
namespace {

constexpr int toLookAt = O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

/// Each has settled something: where that does not end, more records are to come.
constexpr int mostRounds = 16;

} // namespace

bool FolderTree::isSettlementDue() const {
    return (hasMovement_ && !(unsettled_.empty() && departures_.empty())) ||
           (hasAccess_ && !locked_.empty());
}

/// Settling one folder may show the way to another: in rounds, until one settles none.
void FolderTree::settle() {
    hasMovement_ = false;
    if (std::exchange(hasAccess_, false))
        unsettled_.merge(std::exchange(locked_, {}));
    removeDeparted();
    bool isAnySettled = true;
    for (int round = 0; round < mostRounds && isAnySettled; ++round) {
        isAnySettled = false;
        for (const int folder : std::exchange(unsettled_, {})) {
            if (!contains(folder))
                continue;
            listAgain(folder);
            isAnySettled = isAnySettled || !unsettled_.contains(folder);
        }
    }
}

/// A folder may have gone between its meeting and its watch: then of it there is no record but that
/// of the folder that held it.
void FolderTree::removeDeparted() {
    for (const auto& [parent, names] : std::exchange(departures_, {})) {
        if (!contains(parent))
            continue;
        for (const int child : table_.children(parent)) {
            if (names.contains(table_.find(child)->name) && placeOf(child) == Place::elsewhere)
                remove(child);
        }
    }
}

void FolderTree::listAgain(int folder) {
    const int descriptor = openFolder(folder);
    if (descriptor == -1)
        return;
    FileHandle handle(openat(descriptor, ".", toList));
    if (handle.fileDescriptor() == -1) {
        noteUnread(folder, errno);
        return;
    }
    ++pass_;
    follow({.folder = folder, .handle = std::move(handle)}, Reason::change);
    for (const int child : table_.children(folder)) {
        if (table_.find(child)->pass != pass_ && placeOf(child) == Place::elsewhere)
            remove(child);
    }
}

FolderTree::Place FolderTree::placeOf(int folder) {
    const auto* const entry = table_.find(folder);
    const int descriptor = openFolder(entry->parent);
    if (descriptor == -1)
        return Place::unknown;
    const FileHandle found(openat(descriptor, entry->name.c_str(), toLookAt));
    if (found.fileDescriptor() == -1) {
        const int code = errno;
        noteUnmet(entry->parent, descriptor, code);
        return isAbsence(code) ? Place::elsewhere : Place::unknown;
    }
    return watches_.add(found.fileDescriptor()) == folder ? Place::here : Place::elsewhere;
}

void FolderTree::checkPlace(int folder) {
    if (placeOf(folder) != Place::here)
        remove(folder);
}

} // namespace Platform
