#pragma once

#include "CorbelKit/Services/SavedUndoItems.h"
#include "CorbelKit/Services/UserDataProtocols.h"
#include "Platform/MainThread.h"
#include "Platform/UUID.h"
#include "Platform/UndoManager.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace CorbelKit {

/// A list of user data that the user edits: every change is saved in the background and can be
/// undone. Items are copied, have a `Coding`, are moved without failure, and are distinguished by
/// their member `uuid`. Main thread.
///
/// Arguments may refer to what the list holds. An exception that an item throws while it is copied
/// or encoded leaves the list as it was.
template <class Item>
class UserDataList final : public UserDataProtocol<std::vector<Item>> {
public:
    /// How a change came about.
    enum class Cause : std::uint8_t { edit, undo, redo };

    /// Called after each change, which is on its way to the file by then, with the item it was of.
    using Observer = std::function<void(const Platform::UUID& identifier, Cause cause)>;

    /// The list is empty until it is loaded. The undo manager outlives it.
    UserDataList(std::optional<Platform::URL> url, Platform::UndoManager& undoManager)
        : url_(std::move(url))
        , undoManager_(undoManager) {}

    std::vector<Item> userData() const override { return items_; }

    std::optional<Platform::URL> url() const override { return url_; }

    /// In the order of the list. Valid until the next change.
    const std::vector<Item>& items() const { return items_; }

    /// Null where there is no such item.
    const Item* find(const Platform::UUID& identifier) const {
        const auto found = std::ranges::find(items_, identifier, &Item::uuid);
        return found != items_.end() ? &*found : nullptr;
    }

    /// In place of the one before; empty for none.
    void setObserver(Observer observer) { observer_ = std::move(observer); }

    /// Takes the items of the file, as the saves leave it that were requested before: to be called
    /// before the first change, which else replaces what the file holds. What could be undone still
    /// can. On an error the list stays as it was, and the first change sets the file aside, as
    /// `UserDataFile::write` does.
    std::optional<Platform::Error> load() {
        Platform::MainThread::check();
        auto items = UserDataFile::load<Item>(url_);
        isFileUnread_ = !items;
        if (!items)
            return items.error();
        items_ = std::move(*items);
        return std::nullopt;
    }

    /// Puts the item at the index, or at the end where the list is shorter: a new one, or one that
    /// is there already, with what it holds now. The action name is what can be undone.
    void put(Item item, std::size_t index, std::string_view actionName) {
        const auto identifier = item.uuid;
        change(identifier, Place{.index = index, .item = std::move(item)}, actionName);
    }

    /// Does nothing where there is no such item.
    void remove(Platform::UUID identifier, std::string_view actionName) {
        change(identifier, std::nullopt, actionName);
    }

private:
    struct Place {
        std::size_t index;
        Item item;
    };

    /// All that may fail comes before the list changes, and nothing is a reference into it.
    void change(const Platform::UUID identifier, std::optional<Place> after,
                std::string_view actionName) {
        Platform::MainThread::check();
        const std::string name(actionName);
        const auto before = placeOf(identifier);
        if (!before && !after)
            return;
        if (items_.size() == items_.capacity())
            items_.reserve(2 * items_.size() + 1);
        undoManager_.registerUndo(name, [this, life = std::weak_ptr(life_), identifier, before,
                                         name, kept = kept(before)] {
            if (!life.expired())
                change(identifier, before, name);
        });
        if (before)
            items_.erase(place(before->index));
        if (after)
            items_.insert(place(after->index), std::move(after->item));
        saveChange();
        notifyObserver(identifier);
    }

    std::optional<Place> placeOf(const Platform::UUID& identifier) const {
        const auto found = std::ranges::find(items_, identifier, &Item::uuid);
        if (found == items_.end())
            return std::nullopt;
        return Place{.index = static_cast<std::size_t>(found - items_.begin()), .item = *found};
    }

    auto place(std::size_t index) {
        return items_.begin() + static_cast<std::ptrdiff_t>(std::min(index, items_.size()));
    }

    static SavedUndoItems::Kept kept(const std::optional<Place>& before) {
        if (!before)
            return {};
        auto value = encoded(before->item, CodingFormat::propertyList);
        return value ? SavedUndoItems::shared().keep(before->item.uuid, std::move(*value))
                     : SavedUndoItems::Kept();
    }

    void saveChange() {
        // Somebody else may have read the file since; these items are not from there.
        if (std::exchange(isFileUnread_, false))
            UserDataFile::noteLoaded(url_, false);
        this->save();
    }

    void notifyObserver(const Platform::UUID& identifier) const {
        if (const auto observer = observer_) // which may set another, or end the list
            observer(identifier, cause());
    }

    Cause cause() const {
        if (undoManager_.isUndoing())
            return Cause::undo;
        return undoManager_.isRedoing() ? Cause::redo : Cause::edit;
    }

    const std::optional<Platform::URL> url_;
    Platform::UndoManager& undoManager_;
    std::vector<Item> items_;
    Observer observer_;
    bool isFileUnread_ = false; // of what is to be replaced
    // What is registered with the undo manager may outlive the list.
    const std::shared_ptr<const bool> life_ = std::make_shared<const bool>(true);
};

} // namespace CorbelKit
