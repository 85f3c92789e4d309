#pragma once

#include "Platform/Expected.h"
#include "Platform/PropertyList.h"
#include "Platform/URL.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <utility>

namespace Platform {

/// The property-list file that holds a settings domain. Reading takes no lock, because a writer
/// puts a whole new file in place. A link stays, and leads to the new one.
class DomainFile {
public:
    /// An empty path is the file of a domain that cannot be kept: it reads as empty.
    explicit DomainFile(std::filesystem::path path)
        : path_(std::move(path)) {}

    const std::filesystem::path& path() const { return path_; }

    /// Empty when the file is missing, unreadable or no dictionary.
    PropertyList::Dictionary values() const;

    /// Absent when the file is missing. Gives the reason where it cannot be read, or is no
    /// dictionary.
    Expected<std::optional<PropertyList::Dictionary>> read() const;

    /// Reads, changes and replaces the file while no other process does. Gives the reason where
    /// that fails: the file is as it was then. One that cannot be read now, for want of the right
    /// to, say, is such a failure; one whose content is no dictionary is set aside, which is
    /// logged.
    std::optional<Error> change(const std::function<void(PropertyList::Dictionary&)>& edit) const;

private:
    struct Content {
        PropertyList::Dictionary values;
        PropertyList::Format format = PropertyList::Format::xml;
        bool isUnderstood = true;
    };

    URL url() const { return URL::file(path_.native(), URL::DirectoryHint::notDirectory); }

    Expected<Content> readContent() const;
    std::optional<Error> write(Content content) const;

    std::filesystem::path path_;
};

} // namespace Platform
