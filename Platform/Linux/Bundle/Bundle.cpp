#include "Platform/Bundle.h"

#include "Platform/Linux/Bundle/BundleFiles.h"
#include "Platform/Linux/Bundle/BundleLayout.h"
#include "Platform/Linux/Bundle/Localization.h"
#include "Platform/Mutex.h"
#include "Platform/NeverDestroyed.h"
#include "Platform/TextServices.h"

#include <filesystem>
#include <map>
#include <utility>
#include <vector>

namespace Platform {
namespace {

using Hint = URL::DirectoryHint;
using Table = std::map<std::string, std::string, std::less<>>;

constexpr std::string_view localizationSuffix = ".lproj";

/// No file of a bundle has reason to be larger.
constexpr std::size_t largestFile = std::size_t{8} << 20U;

/// Empty when the file holds no dictionary.
PropertyList::Dictionary dictionaryOf(const URL& file) {
    const auto bytes = BundleFiles::read(file, largestFile);
    auto list = bytes ? PropertyList::read(*bytes) : std::nullopt;
    auto* dictionary = list ? std::get_if<PropertyList::Dictionary>(&list->value()) : nullptr;
    return dictionary != nullptr ? std::move(*dictionary) : PropertyList::Dictionary{};
}

Table tableOf(const URL& file) {
    Table table;
    for (const auto& [key, value] : dictionaryOf(file)) {
        if (const auto* text = value.get<std::string>())
            table.emplace(key, *text);
    }
    return table;
}

Localizations localizationsIn(const URL& resources) {
    std::vector<std::string> names;
    for (auto& name : BundleFiles::names(resources)) {
        if (name.ends_with(localizationSuffix))
            names.push_back(name.substr(0, name.size() - localizationSuffix.size()));
    }
    return Localizations(std::move(names));
}

/// The folder of the localisation that suits the user best; absent when there is none at all.
std::optional<URL> localizationURL(const URL& resources, const PropertyList::Dictionary& info) {
    auto languages = TextServices::preferredLanguages();
    const auto region = info.find("CFBundleDevelopmentRegion");
    const auto* text = region != info.end() ? region->second.get<std::string>() : nullptr;
    languages.push_back(text != nullptr ? *text : "en");

    const auto localizations = localizationsIn(resources);
    for (const auto& language : languages) {
        if (auto name = localizations.best(language))
            return resources.appending(name->append(localizationSuffix), Hint::isDirectory);
    }
    return std::nullopt;
}

/// The folder above Contents/ of the running executable, or else the executable's own.
URL mainBundleURL() {
    std::error_code error;
    const auto executable = std::filesystem::read_symlink("/proc/self/exe", error);
    const auto folder = executable.parent_path();
    const auto contents = folder.parent_path();
    const auto& bundle = contents.filename() == "Contents" ? contents.parent_path() : folder;
    return URL::file(bundle.string(), Hint::isDirectory);
}

} // namespace

class Bundle::Impl {
public:
    explicit Impl(const URL& url)
        : Impl(url, BundleLayout::of(url)) {}

    std::string localizedString(std::string_view key, std::string_view table) {
        const MutexLock lock(mutex_);
        const auto& texts = tableNamed(table);
        const auto found = texts.find(key);
        return std::string(found != texts.end() ? found->second : key);
    }

    bool isLocalized() const { return localization_.has_value(); }

    const URL bundleURL;
    const URL resources;
    const PropertyList::Dictionary infoDictionary;

private:
    Impl(URL url, const BundleLayout& layout)
        : bundleURL(std::move(url))
        , resources(layout.resources)
        , infoDictionary(dictionaryOf(layout.information))
        , localization_(localizationURL(layout.resources, infoDictionary)) {}

    const Table& tableNamed(std::string_view name) CORBEL_REQUIRES(mutex_) {
        auto found = tables_.find(name);
        if (found == tables_.end()) {
            auto table =
                localization_
                    ? tableOf(localization_->appending(std::string(name).append(".strings")))
                    : Table{};
            found = tables_.emplace(name, std::move(table)).first;
        }
        return found->second;
    }

    const std::optional<URL> localization_;
    Mutex mutex_;
    std::map<std::string, Table, std::less<>> tables_ CORBEL_GUARDED_BY(mutex_);
};

const Bundle& Bundle::main() {
    static const NeverDestroyed<Bundle> bundle(mainBundleURL());
    return bundle.get();
}

std::optional<PropertyList::Dictionary> Bundle::informationDictionary(const URL& bundleURL) {
    auto dictionary = dictionaryOf(BundleLayout::of(bundleURL).information);
    return dictionary.empty() ? std::nullopt : std::optional(std::move(dictionary));
}

Bundle::Bundle(const URL& bundleURL)
    : impl_(std::make_shared<Impl>(bundleURL)) {}

const URL& Bundle::bundleURL() const {
    return impl_->bundleURL;
}

const PropertyList::Dictionary& Bundle::infoDictionary() const {
    return impl_->infoDictionary;
}

std::optional<URL> Bundle::urlForResource(std::string_view name) const {
    const auto url = impl_->resources.appending(name);
    return BundleFiles::exist(url) ? std::optional(url) : std::nullopt;
}

bool Bundle::isLocalized() const {
    return impl_->isLocalized();
}

std::string Bundle::localizedString(std::string_view key, std::string_view table) const {
    return impl_->localizedString(key, table);
}

} // namespace Platform
