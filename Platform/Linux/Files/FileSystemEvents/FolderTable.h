#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace Platform {

/// The folders that are watched in one tree, by their watch descriptors. A folder knows its name
/// and its parent, not its path, so that moving one with all that is below costs no more than
/// moving a leaf.
class FolderTable {
public:
    static constexpr int none = -1;

    struct Folder {
        std::string name; // of the root: its path
        int parent = none;
        int firstChild = none;
        int nextSibling = none;
        int previousSibling = none;
        unsigned pass = 0; // over the tree, the last that came by
    };

    /// Null when the folder is unknown. Good until the table changes.
    Folder* find(int folder);

    void insert(int folder, int parent, std::string_view name);
    void move(int folder, int parent, std::string_view name);

    /// The folder, which is known, and all below it.
    std::vector<int> subtree(int folder) const;

    /// Removes the folder and all below it, and gives their descriptors.
    std::vector<int> remove(int folder);

    /// Those that were not come by on the pass.
    std::vector<int> allBut(unsigned pass) const;

    std::vector<int> children(int folder) const;

    /// Whether `folder` is `ancestor` or below it.
    bool isWithin(int folder, int ancestor) const;

    std::string path(int folder) const;

    std::size_t size() const { return folders_.size(); }

private:
    void attach(int number, Folder& folder);
    void detach(const Folder& folder);

    std::unordered_map<int, Folder> folders_;
};

/// The path of an item of the folder.
void appendName(std::string& path, std::string_view name);

} // namespace Platform
