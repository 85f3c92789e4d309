#pragma once

#include "Platform/PropertyList.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <utility>

namespace Platform {

/// The property-list file that holds a settings domain. Reading takes no lock, because a writer
/// puts a whole new file in place.
class DomainFile {
public:
    /// An empty path is the file of a domain that cannot be kept: it reads as empty.
    explicit DomainFile(std::filesystem::path path)
        : path_(std::move(path)) {}

    const std::filesystem::path& path() const { return path_; }

    /// Empty when the file is missing, unreadable or no dictionary.
    PropertyList::Dictionary values() const;

    /// Reads, changes and replaces the file while no other process does. A file that cannot be read
    /// is left alone; one whose content is broken is replaced.
    void change(const std::function<void(PropertyList::Dictionary&)>& edit) const;

private:
    struct Content {
        PropertyList::Dictionary values;
        PropertyList::Format format = PropertyList::Format::xml;
    };

    std::optional<Content> read() const;
    void write(const Content& content) const;

    std::filesystem::path path_;
};

} // namespace Platform
