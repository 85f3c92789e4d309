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
/// undone. Items are copied, have a `Coding`, and are told apart by their member `uuid`. Main
/// thread.
template <class Item>
class UserDataList final : public UserDataProtocol<std::vector<Item>> {
public:
    /// How a change came about.
    enum class Cause : std::uint8_t { edit, undo, redo };

    /// Told after each change which item it was of. It must not change the list.
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

    /// Takes the items of the file, and forgets nothing that could be undone before: to be called
    /// once. On an error the list stays as it was, and whoever changes it saves over the file.
    std::optional<Platform::Error> load() {
        Platform::MainThread::check();
        auto items = UserDataFile::load<Item>(url_);
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
    void remove(const Platform::UUID& identifier, std::string_view actionName) {
        if (find(identifier) != nullptr)
            change(identifier, std::nullopt, actionName);
    }

private:
    struct Place {
        std::size_t index;
        Item item;
    };

    void change(const Platform::UUID& identifier, std::optional<Place> after,
                std::string_view actionName) {
        Platform::MainThread::check();
        auto before = takeOut(identifier);
        if (before)
            keepForUndo(before->item);
        undoManager_.registerUndo(actionName,
                                  [this, life = std::weak_ptr(life_), identifier,
                                   before = std::move(before), name = std::string(actionName)] {
                                      if (!life.expired())
                                          change(identifier, before, name);
                                  });
        if (after) {
            const auto index = static_cast<std::ptrdiff_t>(std::min(after->index, items_.size()));
            items_.insert(items_.begin() + index, std::move(after->item));
        }
        this->save();
        if (observer_)
            observer_(identifier, cause());
    }

    std::optional<Place> takeOut(const Platform::UUID& identifier) {
        const auto found = std::ranges::find(items_, identifier, &Item::uuid);
        if (found == items_.end())
            return std::nullopt;
        Place place{.index = static_cast<std::size_t>(found - items_.begin()),
                    .item = std::move(*found)};
        items_.erase(found);
        return place;
    }

    static void keepForUndo(const Item& item) {
        if (auto value = encoded(item, CodingFormat::propertyList))
            SavedUndoItems::shared().keep(item.uuid, std::move(*value));
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
    // What is registered with the undo manager may outlive the list.
    const std::shared_ptr<const bool> life_ = std::make_shared<const bool>(true);
};

} // namespace CorbelKit
