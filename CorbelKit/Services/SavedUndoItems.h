#pragma once

#include "Platform/DispatchQueue.h"
#include "Platform/PropertyList.h"
#include "Platform/UUID.h"

#include <functional>
#include <memory>
#include <optional>

namespace CorbelKit {

/// What changes to user data have taken the place of: for each item that was changed, its coded
/// value as it was saved last before. Items are distinguished by their identifiers. Callable on any
/// thread.
class SavedUndoItems {
public:
    /// Gets the coded value.
    using Completion = std::function<void(const std::optional<Platform::PropertyList>& item)>;

    /// What keeps a value: whatever can bring the item back holds it. The value is forgotten with
    /// the last copy.
    using Kept = std::shared_ptr<const void>;

    /// The one of the process, never destroyed.
    static SavedUndoItems& shared();

    SavedUndoItems();
    ~SavedUndoItems() = default;
    SavedUndoItems(const SavedUndoItems&) = delete;
    SavedUndoItems& operator=(const SavedUndoItems&) = delete;
    SavedUndoItems(SavedUndoItems&&) = delete;
    SavedUndoItems& operator=(SavedUndoItems&&) = delete;

    /// In place of earlier ones of the same item, until it is forgotten.
    [[nodiscard]] Kept keep(const Platform::UUID& identifier, Platform::PropertyList item);

    /// Forgets all values of the item, though something keeps them.
    void forget(const Platform::UUID& identifier);

    /// The completion runs on the queue; absent where no such item is kept.
    void find(const Platform::UUID& identifier, const Platform::DispatchQueue& queue,
              Completion completion) const;

private:
    class Items;

    const std::shared_ptr<Items> items_;
};

} // namespace CorbelKit
