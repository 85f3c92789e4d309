#pragma once

#include "CorbelKit/Services/Cancellation.h"
#include "Platform/DispatchQueue.h"
#include "Platform/Expected.h"
#include "Platform/URL.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

namespace CorbelKit {

/// A node of a tree of files: a file, or a folder with what it holds. A reference: copies are the
/// same node, and any node keeps its whole tree, which never changes. Callable on any thread.
///
/// A link is a file, wherever it leads. What is hidden is left out, unless the setting
/// "FoldersShowsHidden" was on when the process listed its first folder.
class FileItem {
public:
    /// Gets the tree, or the reason why there is none.
    using Completion = std::function<void(Platform::Expected<FileItem> item)>;

    /// Lists the folder and all below it, if the URL is that of a folder, and returns when that is
    /// done. The error of a folder that cannot be read, at any depth, is that of the whole. Once
    /// cancelled, no more folders are listed: they stay without children.
    static Platform::Expected<FileItem> make(const Platform::URL& url, bool isRoot,
                                             const Cancellation& cancellation = {});

    /// The same as a task; the completion runs on the queue.
    static void make(const Platform::URL& url, bool isRoot, const Cancellation& cancellation,
                     const Platform::DispatchQueue& queue, Completion completion);

    /// Where the item was found.
    Platform::URL url() const;

    /// The last component of the URL's path, as bytes. Valid as long as a node of the tree lives.
    std::string_view name() const;

    /// Whether it was made as the root that the user added.
    bool isRoot() const;

    /// Of the folder itself, not of those below; 0 for a file.
    std::size_t childCount() const;

    /// In the order in which the file system lists them.
    FileItem child(std::size_t index) const;

    /// As they are shown: by name, in the order of the user's language, 9 before 10.
    std::vector<FileItem> childrenInDisplayOrder() const;

    friend bool operator==(const FileItem&, const FileItem&) = default;

private:
    class Tree;
    FileItem(std::shared_ptr<const Tree> tree, std::uint32_t node);

    std::shared_ptr<const Tree> tree_;
    std::uint32_t node_;
};

} // namespace CorbelKit
