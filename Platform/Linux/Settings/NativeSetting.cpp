#include "Platform/Linux/Settings/NativeSetting.h"

#include "Platform/Linux/Settings/RegisteredDefaults.h"
#include "Platform/Linux/Settings/WatchedFiles.h"

#include <filesystem>
#include <map>
#include <utility>

namespace Platform {

NativeSetting::Impl::Impl(DomainFile domain, std::string keyPath)
    : file(std::move(domain))
    , key(std::move(keyPath)) {
    WatchedFiles::shared().add(file.path());
}

NativeSetting::Impl::~Impl() {
    WatchedFiles::shared().remove(file.path());
}

NativeSetting::NativeSetting(std::unique_ptr<Impl> impl)
    : impl_(std::move(impl)) {}

NativeSetting::~NativeSetting() = default;

std::vector<std::optional<PropertyList>>
NativeSetting::values(const std::vector<const NativeSetting*>& settings) {
    std::map<std::filesystem::path, PropertyList::Dictionary> read;
    std::vector<std::optional<PropertyList>> values;
    for (const auto* setting : settings) {
        const auto& [file, key] = *setting->impl_;
        auto found = read.find(file.path());
        if (found == read.end())
            found = read.emplace(file.path(), file.values()).first;
        values.push_back(RegisteredDefaults::lookUp(found->second, key));
    }
    return values;
}

} // namespace Platform
