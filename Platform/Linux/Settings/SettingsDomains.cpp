#include "Platform/Linux/Public/SettingsDomains.h"

#include "Platform/FileManager.h"
#include "Platform/Linux/Settings/DomainFile.h"
#include "Platform/Linux/Settings/FileLock.h"
#include "Platform/Linux/Settings/SettingsFolder.h"
#include "Platform/POSIX/SystemError.h"
#include "Platform/PrintableText.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <utility>

namespace Platform::SettingsDomains {
namespace {

Error badName(std::string_view domain) {
    return {"there can be no domain " + printableText(domain, ActingCharacters::escaped)};
}

} // namespace

std::vector<std::string> list() {
    constexpr std::string_view suffix = ".plist";
    std::vector<std::string> domains;
    const auto any = settingsFile("any");
    if (!any)
        return domains;
    FileManager::forEachEntry(any->parent_path(), {}, [&](std::string_view name, bool isFolder) {
        if (!isFolder && name.size() > suffix.size() && name.ends_with(suffix))
            domains.emplace_back(name.substr(0, name.size() - suffix.size()));
    });
    std::ranges::sort(domains);
    return domains;
}

Expected<std::optional<PropertyList::Dictionary>> read(std::string_view domain) {
    const auto file = settingsFile(domain);
    if (!file)
        return badName(domain);
    return DomainFile(*file).read();
}

std::optional<Error>
change(std::string_view domain,
       const std::function<std::optional<Error>(PropertyList::Dictionary&)>& edit) {
    const auto file = settingsFile(domain);
    if (!file)
        return badName(domain);
    std::optional<Error> refusal;
    auto failure = DomainFile(*file).change([&](PropertyList::Dictionary& values) {
        auto edited = values;
        refusal = edit(edited);
        if (!refusal)
            values = std::move(edited);
    });
    return refusal ? refusal : failure;
}

Expected<bool> remove(std::string_view domain) {
    const auto file = settingsFile(domain);
    if (!file)
        return badName(domain);
    std::error_code failure;
    if (!std::filesystem::exists(std::filesystem::symlink_status(*file, failure)))
        return false;
    const auto lock = lockBeside(*file);
    if (!lock)
        return lock.error();
    if (unlink(file->c_str()) != 0 && errno != ENOENT)
        return systemError(file->native(), errno);
    return true;
}

} // namespace Platform::SettingsDomains
