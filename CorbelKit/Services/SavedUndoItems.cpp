#include "CorbelKit/Services/SavedUndoItems.h"

#include "Platform/NeverDestroyed.h"

#include <utility>

namespace CorbelKit {

SavedUndoItems& SavedUndoItems::shared() {
    static const Platform::NeverDestroyed<SavedUndoItems> items;
    return items.get();
}

void SavedUndoItems::keep(const Platform::UUID& identifier, Platform::PropertyList item) {
    queue_.async(
        [this, identifier, item = std::move(item)] { items_.insert_or_assign(identifier, item); });
}

void SavedUndoItems::forget(const Platform::UUID& identifier) {
    queue_.async([this, identifier] { items_.erase(identifier); });
}

void SavedUndoItems::find(const Platform::UUID& identifier, const Platform::DispatchQueue& queue,
                          Completion completion) const {
    queue_.async([this, identifier, queue, completion = std::move(completion)] {
        const auto found = items_.find(identifier);
        queue.async([completion, item = found != items_.end()
                                            ? std::optional(found->second)
                                            : std::nullopt] { completion(item); });
    });
}

} // namespace CorbelKit
