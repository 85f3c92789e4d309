#include "CorbelKit/Formats/FileItem.h"

#include "CorbelKit/Services/Defaults.h"
#include "Platform/FileManager.h"
#include "Platform/TextServices.h"
#include "Platform/UserDefaults.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <ranges>
#include <string>
#include <utility>

namespace CorbelKit {
namespace {

using Platform::URL;
using Platform::FileManager::ListingOptions;

ListingOptions listingOptions() {
    static const auto options = [] {
        const auto& settings = Platform::UserDefaults::standard();
        const bool showsHidden = settings.boolean(Defaults::foldersShowsHidden).value_or(false);
        return showsHidden ? ListingOptions::skipsSubdirectoryDescendants
                           : ListingOptions::skipsDescendantsAndHiddenFiles;
    }();
    return options;
}

} // namespace

/// All nodes of a tree. They refer to each other by number, and a folder's children stand side by
/// side, so that a node costs little more than its name, and neither building nor letting go of a
/// deep tree takes a deep stack.
class FileItem::Tree {
public:
    using Index = std::uint32_t;

    Tree(const URL& root, bool isRoot)
        : root_(root)
        , isRoot_(isRoot) {
        add(0, root.lastPathComponent(), root.hasDirectoryPath());
    }

    std::optional<Platform::Error> build(const Cancellation& cancellation) {
        for (Index node = 0; node < nodes_.size(); ++node) {
            if (cancellation.isCancelled())
                break;
            if (!nodes_[node].isFolder)
                continue;
            if (auto error = list(node))
                return error;
        }
        nodes_.shrink_to_fit();
        names_.shrink_to_fit();
        return std::nullopt;
    }

    URL url(Index node) const {
        if (node == 0)
            return root_;
        return URL::file(path(node), nodes_[node].isFolder ? URL::DirectoryHint::isDirectory
                                                           : URL::DirectoryHint::notDirectory);
    }

    std::string_view name(Index node) const {
        return std::string_view(names_).substr(nodes_[node].name, nodes_[node].nameLength);
    }

    bool isRoot(Index node) const { return isRoot_ && node == 0; }

    Index firstChild(Index node) const { return nodes_[node].firstChild; }

    Index childCount(Index node) const { return nodes_[node].childCount; }

private:
    struct Node {
        std::size_t name; // where it begins in names_
        std::uint32_t nameLength;
        Index parent;
        Index firstChild = 0;
        Index childCount = 0;
        bool isFolder;
    };

    std::string path(Index node) const {
        std::vector<Index> way;
        for (auto step = node; step != 0; step = nodes_[step].parent)
            way.push_back(step);
        auto path = root_.isFileURL() ? root_.path() : std::string();
        for (const auto step : std::views::reverse(way)) {
            if (!path.ends_with('/'))
                path += '/';
            path += name(step);
        }
        return path;
    }

    void add(Index parent, std::string_view name, bool isFolder) {
        nodes_.push_back({.name = names_.size(),
                          .nameLength = static_cast<std::uint32_t>(name.size()),
                          .parent = parent,
                          .isFolder = isFolder});
        names_ += name;
    }

    std::optional<Platform::Error> list(Index folder) {
        const auto first = nodes_.size();
        auto error = Platform::FileManager::forEachEntry(path(folder), listingOptions(),
                                                         [&](std::string_view name, bool isFolder) {
                                                             if (!name.empty())
                                                                 add(folder, name, isFolder);
                                                         });
        if (nodes_.size() > std::numeric_limits<Index>::max())
            error = Platform::Error{"too many files"};
        nodes_[folder].firstChild = static_cast<Index>(first);
        nodes_[folder].childCount = static_cast<Index>(nodes_.size() - first);
        return error;
    }

    const URL root_;
    const bool isRoot_;
    std::vector<Node> nodes_; // folders before what they hold
    std::string names_;
};

Platform::Expected<FileItem> FileItem::make(const URL& url, bool isRoot,
                                            const Cancellation& cancellation) {
    const auto tree = std::make_shared<Tree>(url, isRoot);
    if (auto error = tree->build(cancellation))
        return std::move(*error);
    return FileItem(tree, 0);
}

void FileItem::make(const URL& url, bool isRoot, const Cancellation& cancellation,
                    const Platform::DispatchQueue& queue, Completion completion) {
    queue.async(
        [=, completion = std::move(completion)] { completion(make(url, isRoot, cancellation)); });
}

FileItem::FileItem(std::shared_ptr<const Tree> tree, std::uint32_t node)
    : tree_(std::move(tree))
    , node_(node) {}

URL FileItem::url() const {
    return tree_->url(node_);
}

std::string_view FileItem::name() const {
    return tree_->name(node_);
}

bool FileItem::isRoot() const {
    return tree_->isRoot(node_);
}

std::size_t FileItem::childCount() const {
    return tree_->childCount(node_);
}

FileItem FileItem::child(std::size_t index) const {
    return {tree_, tree_->firstChild(node_) + static_cast<std::uint32_t>(index)};
}

std::vector<FileItem> FileItem::childrenInDisplayOrder() const {
    std::vector<FileItem> children;
    children.reserve(childCount());
    for (std::size_t index = 0; index < childCount(); ++index)
        children.push_back(child(index));
    std::ranges::sort(children, [](const FileItem& one, const FileItem& other) {
        const auto order =
            Platform::TextServices::localizedStandardCompare(one.name(), other.name());
        return order != 0 ? order < 0 : one.node_ < other.node_;
    });
    return children;
}

} // namespace CorbelKit
