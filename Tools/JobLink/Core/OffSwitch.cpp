#include "Tools/JobLink/Core/OffSwitch.h"

#include "Platform/FileContents.h"
#include "Platform/FileManager.h"
#include "Tools/JobLink/Core/DescribedText.h"
#include "Tools/JobLink/Core/Dialects.h"
#include "Tools/JobLink/Core/KeyFile.h"
#include "Tools/JobLink/Core/TimedTool.h"

#include <cstdlib>
#include <filesystem>
#include <span>
#include <system_error>
#include <utility>

namespace JobLink {
namespace {

using Platform::Error;
using Platform::URL;

constexpr auto folderHint = URL::DirectoryHint::isDirectory;

// XDG Base Directory 0.8.
std::optional<URL> configurationFolder() {
    const char* const given = std::getenv("XDG_CONFIG_HOME");
    if (given != nullptr && *given == '/')
        return URL::file(given, folderHint);
    const auto home = Platform::FileManager::homeDirectoryForRealUser();
    return home ? std::optional(home->appending(".config", folderHint)) : std::nullopt;
}

/// Where the user's own of the name stands.
std::optional<JobPlace> placeOfUser(const char* folder, const std::string& name) {
    const auto configuration = configurationFolder();
    if (!configuration)
        return std::nullopt;
    return JobPlace{.folder = configuration->appending(folder, folderHint), .name = name};
}

std::optional<JobPlace> entryOfUser(const std::string& name) {
    return placeOfUser("autostart", name);
}

URL urlOf(const JobPlace& place) {
    return URL::file(place.path());
}

OffSwitch::Kind kindOf(const JobPlace& place, const JobDescription& description) {
    if (description.kind == JobDescription::Kind::desktopEntry)
        return OffSwitch::Kind::desktopEntry;
    const auto own = placeOfUser("systemd/user", place.name);
    const bool isUserUnit =
        description.isInstallable && own && own->folder.path() == place.folder.path();
    return isUserUnit ? OffSwitch::Kind::userUnit : OffSwitch::Kind::none;
}

/// systemctl(1). All others, "static" and "generated" among them, may be started.
bool isOffState(std::string_view state) {
    return state == "disabled" || state == "masked" || state == "masked-runtime";
}

// Below whatever a reader may take for lines: all take the last word, and an empty line ends what
// is joined with the next one.
constexpr std::string_view overruling = "\n\n[Desktop Entry]\nHidden=true\n";

/// Of content of which all readers see the same lines.
std::string hiddenInPlace(std::string_view content) {
    std::string result;
    bool isInGroup = false;
    while (!content.empty()) {
        const auto whole = takeUntil(content, "\n");
        const auto line = trimmed(whole);
        const auto begun = KeyFile::sectionBegunBy(line);
        if (begun)
            isInGroup = *begun == "Desktop Entry";
        const auto key = trimmed(line.substr(0, line.find('=')));
        if (isInGroup && key == "Hidden")
            continue;
        result.append(whole).append("\n");
        if (begun && isInGroup)
            result += "Hidden=true\n"; // wherever it begins: not all take every such line for that
    }
    return result;
}

} // namespace

OffSwitch::OffSwitch(const JobPlace& place, const JobDescription& description)
    : place_(place)
    , kind_(kindOf(place, description))
    , saysItIsOff_(description.isTurnedOff) {}

bool OffSwitch::isOff() const {
    if (kind_ == Kind::userUnit)
        return isOffState(unitState());
    if (kind_ != Kind::desktopEntry)
        return saysItIsOff_;
    // Of entries of one name the user's counts (Autostart 0.5).
    const auto own = entryOfUser(place_.name);
    const auto file = own && own->path() != place_.path() ? readJobFile(*own) : std::nullopt;
    return file && file->reading == JobFile::Reading::read ? describeJob(*own, *file).isTurnedOff
                                                           : saysItIsOff_;
}

std::optional<Error> OffSwitch::turnOff() {
    return kind_ == Kind::desktopEntry ? hideEntry() : setUnitEnabled(false);
}

std::optional<Error> OffSwitch::turnOn() {
    return kind_ == Kind::desktopEntry ? restoreEntry() : setUnitEnabled(true);
}

std::optional<Error> OffSwitch::hideEntry() {
    const auto own = entryOfUser(place_.name);
    if (!own)
        return Error{"no folder of the user's"};
    auto mine = readJobFile(*own);
    if (mine && mine->reading != JobFile::Reading::read)
        return Error{own->path() + ": not a readable file"}; // such as a link into a package
    auto model = mine ? mine : readJobFile(place_);
    if (!model || model->reading != JobFile::Reading::read)
        return Error{place_.path() + ": cannot be read"};
    const auto hidden =
        hiddenEntry({reinterpret_cast<const char*>(model->content.data()), model->content.size()});
    if (!hidden)
        return Error{place_.path() + ": not a desktop entry"};
    if (!mine && !Platform::FileManager::createDirectory(own->folder))
        return Error{own->folder.path() + ": cannot be made"};
    const auto bytes = std::as_bytes(std::span(*hidden));
    if (auto failure = Platform::FileContents::replace(urlOf(*own), bytes))
        return failure;
    before_ = mine ? std::optional(std::move(mine->content)) : std::nullopt;
    after_.assign(bytes.begin(), bytes.end());
    return std::nullopt;
}

std::optional<Error> OffSwitch::restoreEntry() {
    const auto own = entryOfUser(place_.name);
    const auto mine = own ? readJobFile(*own) : std::nullopt;
    if (!mine || after_.empty() || mine->content != after_)
        return Error{place_.name + ": has been changed since"};
    if (before_) {
        if (auto failure = Platform::FileContents::replace(urlOf(*own), *before_))
            return failure;
    } else {
        std::error_code error;
        std::filesystem::remove(own->path(), error);
        if (error)
            return Error{own->path() + ": " + error.message()};
    }
    after_.clear();
    return std::nullopt;
}

std::optional<Error> OffSwitch::setUnitEnabled(bool isEnabled) const {
    const auto output = runTimedTool(
        "/usr/bin/systemctl", {"--user", isEnabled ? "enable" : "disable", "--", place_.name});
    const auto state = unitState();
    if (isEnabled ? state == "enabled" : isOffState(state))
        return std::nullopt;
    return Error{describedText(trimmed(std::string_view(output).substr(0, output.find('\n'))))};
}

std::string OffSwitch::unitState() const {
    const auto output =
        runTimedTool("/usr/bin/systemctl", {"--user", "is-enabled", "--", place_.name});
    return output.substr(0, output.find('\n'));
}

std::optional<std::string> hiddenEntry(std::string_view content) {
    auto result = KeyFile::isReadAlike(content) ? hiddenInPlace(content)
                                                : std::string(content).append(overruling);
    const bool isOff = Dialects::describeDesktopEntry(result).isTurnedOff;
    return isOff && result.size() <= largestJob ? std::optional(std::move(result)) : std::nullopt;
}

} // namespace JobLink
