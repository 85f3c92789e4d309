#include "CorbelKit/Services/SavedUndoItems.h"

#include "Platform/NeverDestroyed.h"

#include <map>
#include <utility>
#include <vector>

namespace CorbelKit {

/// Outlives the object above as long as anything is kept.
class SavedUndoItems::Items {
public:
    using Value = std::shared_ptr<const Platform::PropertyList>;

    const Platform::DispatchQueue queue =
        Platform::DispatchQueue::serial("com.tarnwell.SavedUndoItems");
    std::map<Platform::UUID, std::vector<Value>> values; // queue; of each the latest last

    void forget(const Platform::UUID& identifier, const Value& value) {
        const auto found = values.find(identifier);
        if (found == values.end())
            return;
        std::erase(found->second, value);
        if (found->second.empty())
            values.erase(found);
    }
};

SavedUndoItems& SavedUndoItems::shared() {
    static const Platform::NeverDestroyed<SavedUndoItems> items;
    return items.get();
}

SavedUndoItems::SavedUndoItems()
    : items_(std::make_shared<Items>()) {}

SavedUndoItems::Kept SavedUndoItems::keep(const Platform::UUID& identifier,
                                          Platform::PropertyList item) {
    auto value = std::make_shared<const Platform::PropertyList>(std::move(item));
    items_->queue.async(
        [items = items_, identifier, value] { items->values[identifier].push_back(value); });
    const auto* kept = value.get();
    return {kept, [items = items_, identifier, value = std::move(value)](const auto*) {
                items->queue.async(
                    [items, identifier, value] { items->forget(identifier, value); });
            }};
}

void SavedUndoItems::forget(const Platform::UUID& identifier) {
    items_->queue.async([items = items_, identifier] { items->values.erase(identifier); });
}

void SavedUndoItems::find(const Platform::UUID& identifier, const Platform::DispatchQueue& queue,
                          Completion completion) const {
    if (!completion)
        return;
    items_->queue.async([items = items_, identifier, queue, completion = std::move(completion)] {
        const auto found = items->values.find(identifier);
        auto item =
            found != items->values.end() ? std::optional(*found->second.back()) : std::nullopt;
        queue.async([completion, item = std::move(item)] { completion(item); });
    });
}

} // namespace CorbelKit
