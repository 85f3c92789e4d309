#pragma once

#include "Tests/Support/Testing.h"

#include <fcntl.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace TestSupport {

/// A folder of the test's own record. It keeps its identity when it moves.
struct Folder {
    fs::path path;
    bool isChanged = false; // in the round, as what is in it
    bool hasMoved = false;  // not only with one above it
};

inline bool isWithin(const fs::path& path, const fs::path& ancestor) {
    const std::string_view rest = path.native();
    const auto& above = ancestor.native();
    return rest.starts_with(above) && (rest.size() == above.size() || rest[above.size()] == '/');
}

/// Changes a tree at random, with few names, so that each is soon taken again; and records which
/// folders it changed.
class RandomChanges {
public:
    RandomChanges(const fs::path& root, const fs::path& outside, unsigned seed)
        : root_(root)
        , outside_(outside)
        , random_(seed) {
        add(root);
    }

    void beginRound() {
        for (auto& folder : folders_)
            *folder = Folder{folder->path};
    }

    void changeSomething() {
        const std::function<void()> kinds[] = {
            [&] { write(any()); },
            [&] { removeFile(any()); },
            [&] { makeChain(any()); },
            [&] { makeChain(any()); },
            [&] { makeAndMoveParents(any()); },
            [&] { moveIn(any()); },
            [&] { move(any(), any().path); },
            [&] { moveThrice(any()); },
            [&] { exchange(any(), any()); },
            [&] { putLinkInPlaceOf(any()); },
            [&] { removeFolder(any()); },
            [&] { move(any(), outside_); },
        };
        kinds[random_() % std::size(kinds)]();
    }

    /// All that lie in the tree.
    std::vector<Folder*> folders() const {
        std::vector<Folder*> present;
        for (const auto& folder : folders_) {
            if (isUsable(*folder))
                present.push_back(folder.get());
        }
        return present;
    }

private:
    /// One that exists, in the tree or outside.
    Folder& any() { return *folders_[random_() % folders_.size()]; }

    /// A path in the folder that nothing has; none where another folder has it.
    fs::path freePath(const fs::path& folder) {
        auto path = folder / std::string(1, static_cast<char>('a' + random_() % 6));
        const auto type = fs::symlink_status(path).type();
        if (type == fs::file_type::symlink)
            fs::remove(path);
        return type == fs::file_type::directory ? fs::path() : path;
    }

    Folder& add(const fs::path& path) {
        return *folders_.emplace_back(std::make_unique<Folder>(Folder{path}));
    }

    bool isUsable(const Folder& folder) const { return isWithin(folder.path, root_); }

    bool mayMove(const Folder& folder) const { return isUsable(folder) && folder.path != root_; }

    void change(const fs::path& path) {
        for (auto& folder : folders_) {
            if (folder->path.native() == path.native())
                folder->isChanged = true;
        }
    }

    void write(const Folder& folder) {
        if (!isUsable(folder))
            return;
        writeFile(folder.path / ("file" + std::to_string(random_() % 4)),
                  std::to_string(random_()));
        change(folder.path);
    }

    void removeFile(const Folder& folder) {
        if (isUsable(folder) && fs::remove(folder.path / ("file" + std::to_string(random_() % 4))))
            change(folder.path);
    }

    /// The topmost folder; null where there is no room.
    Folder* makeChain(const Folder& parent) {
        if (folders_.size() > 300 || !isUsable(parent))
            return nullptr;
        Folder* top = nullptr;
        auto path = parent.path;
        for (auto depth = random_() % 4 + 1; depth > 0; --depth) {
            const auto inner = freePath(path);
            if (inner.empty() || !fs::create_directory(inner))
                break;
            change(path);
            path = inner;
            auto& made = add(path);
            top = top == nullptr ? &made : top;
            write(made);
        }
        return top;
    }

    /// Little goes at once, and only while there is much.
    bool mayGo(const Folder& folder) const {
        const auto present = folders();
        return present.size() > 80 && std::ranges::count_if(present, [&](const auto* other) {
                                          return isWithin(other->path, folder.path);
                                      }) < 10;
    }

    void removeFolder(const Folder& folder) {
        if (!mayMove(folder) || !mayGo(folder))
            return;
        const auto path = folder.path;
        fs::remove_all(path);
        change(path.parent_path());
        std::erase_if(folders_, [&](const auto& other) { return isWithin(other->path, path); });
    }

    void moved(const fs::path& from, const fs::path& to) {
        for (auto& folder : folders_) {
            if (!isWithin(folder->path, from))
                continue;
            folder->hasMoved |= folder->path.native() == from.native();
            folder->path = to.string() + folder->path.string().substr(from.string().size());
        }
    }

    void rename(const fs::path& source, const fs::path& to) {
        const auto from = source; // the path of a folder, which is about to change
        if (to.empty())
            return;
        fs::rename(from, to);
        change(from.parent_path());
        change(to.parent_path());
        moved(from, to);
    }

    void move(const Folder& folder, const fs::path& into) {
        if (!mayMove(folder) || isWithin(into, folder.path) ||
            (!isWithin(into, root_) && !mayGo(folder)))
            return;
        rename(folder.path, into == outside_ ? outside_ / std::to_string(++left_) : freePath(into));
    }

    void moveThrice(const Folder& folder) {
        for (int time = 0; time < 3; ++time)
            move(folder, any().path);
    }

    void moveIn(const Folder& target) {
        const fs::directory_iterator entry(outside_);
        if (entry != fs::directory_iterator() && isUsable(target))
            rename(entry->path(), freePath(target.path));
    }

    void exchange(const Folder& one, const Folder& other) {
        const auto first = one.path;
        const auto second = other.path;
        if (!mayMove(one) || !mayMove(other) || isWithin(first, second) || isWithin(second, first))
            return;
        ASSERT_EQ(renameat2(AT_FDCWD, first.c_str(), AT_FDCWD, second.c_str(), RENAME_EXCHANGE), 0);
        change(first.parent_path());
        change(second.parent_path());
        const auto aside = outside_ / "aside"; // of the record alone
        moved(first, aside);
        moved(second, first);
        moved(aside, second);
    }

    void putLinkInPlaceOf(const Folder& folder) {
        const auto path = folder.path;
        move(folder, any().path);
        if (path != folder.path)
            fs::create_directory_symlink(random_() % 2 == 0 ? folder.path : outside_, path);
    }

    void makeAndMoveParents(const Folder& parent) {
        const Folder* const made = makeChain(parent);
        if (made == nullptr)
            return;
        for (const Folder* const folder : {made, &parent, &std::as_const(any())})
            move(*folder, any().path);
    }

    const fs::path root_;
    const fs::path outside_;
    std::mt19937 random_;
    int left_ = 0;
    std::vector<std::unique_ptr<Folder>> folders_;
};

} // namespace TestSupport
