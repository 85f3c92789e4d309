#include "Platform/Linux/Settings/RegisteredDefaults.h"

#include "Platform/Mutex.h"
#include "Platform/NeverDestroyed.h"

namespace Platform::RegisteredDefaults {
namespace {

struct Registered {
    Mutex mutex;
    PropertyList::Dictionary values CORBEL_GUARDED_BY(mutex);
};

Registered& registered() {
    static const NeverDestroyed<Registered> instance;
    return instance.get();
}

std::optional<PropertyList> valueIn(const PropertyList::Dictionary& values, std::string_view key) {
    const auto found = values.find(key);
    return found != values.end() ? std::optional(found->second) : std::nullopt;
}

} // namespace

void add(const PropertyList::Dictionary& defaults) {
    auto& all = registered();
    const MutexLock lock(all.mutex);
    for (const auto& [key, value] : defaults)
        all.values.insert_or_assign(key, value);
}

std::optional<PropertyList> lookUp(const PropertyList::Dictionary& values, std::string_view key) {
    if (auto value = valueIn(values, key))
        return value;
    auto& all = registered();
    const MutexLock lock(all.mutex);
    return valueIn(all.values, key);
}

} // namespace Platform::RegisteredDefaults
