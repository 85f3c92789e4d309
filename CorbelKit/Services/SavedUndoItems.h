#pragma once

#include "Platform/DispatchQueue.h"
#include "Platform/PropertyList.h"
#include "Platform/UUID.h"

#include <functional>
#include <map>
#include <optional>

namespace CorbelKit {

/// What changes to user data have taken the place of: for each item that was changed, its coded
/// value as it was saved last before. Items are told apart by their identifiers. Callable on any
/// thread.
class SavedUndoItems {
public:
    /// Gets the coded value.
    using Completion = std::function<void(const std::optional<Platform::PropertyList>& item)>;

    /// The one of the process, never destroyed.
    static SavedUndoItems& shared();

    SavedUndoItems() = default;
    ~SavedUndoItems() = default;
    SavedUndoItems(const SavedUndoItems&) = delete;
    SavedUndoItems& operator=(const SavedUndoItems&) = delete;
    SavedUndoItems(SavedUndoItems&&) = delete;
    SavedUndoItems& operator=(SavedUndoItems&&) = delete;

    /// In place of an earlier one of the same item.
    void keep(const Platform::UUID& identifier, Platform::PropertyList item);

    /// Does nothing where no such item is kept.
    void forget(const Platform::UUID& identifier);

    /// The completion runs on the queue; absent where no such item is kept.
    void find(const Platform::UUID& identifier, const Platform::DispatchQueue& queue,
              Completion completion) const;

private:
    const Platform::DispatchQueue queue_ =
        Platform::DispatchQueue::serial("com.tarnwell.SavedUndoItems");
    std::map<Platform::UUID, Platform::PropertyList> items_; // queue_
};

} // namespace CorbelKit
