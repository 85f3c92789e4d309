#pragma once

#include "Platform/PropertyList.h"
#include "Platform/URL.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace Platform {

/// A folder that holds a program or a library together with its resources. A handle; callable on
/// any thread.
class Bundle {
public:
    /// The bundle of the running executable.
    static const Bundle& main();

    /// The Info.plist of the bundle at the URL, which is not opened for that. Absent when there is
    /// no bundle, or none with an Info.plist that can be read and says anything.
    static std::optional<PropertyList::Dictionary> informationDictionary(const URL& bundleURL);

    /// Of a folder that need not be a bundle, nor exist: it then says nothing, and its texts are
    /// their keys. On Linux a URL of the scheme "resource" means what was linked into the program
    /// under its path (GResource).
    explicit Bundle(const URL& bundleURL);

    /// The folder, as it was given.
    const URL& bundleURL() const;

    /// The bundle's Info.plist; empty when it has none that can be read.
    const PropertyList::Dictionary& infoDictionary() const;

    /// A text of the bundle's Info.plist; empty where there is none under the key.
    std::string text(std::string_view key) const;

    /// The file of the name (with its suffix) among the bundle's resources; absent when there is
    /// none.
    std::optional<URL> urlForResource(std::string_view name) const;

    /// Whether it has texts in any language.
    bool isLocalized() const;

    /// The text for `key` in the named table of the localisation that suits the user's languages
    /// best; the key itself where there is none. Tables are read once, on first use.
    std::string localizedString(std::string_view key, std::string_view table = "Localizable") const;

private:
    class Impl;
    std::shared_ptr<Impl> impl_;
};

} // namespace Platform
