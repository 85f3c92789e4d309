#include "Vesper_Pro_Agent/ChangePosting.h"

#include "CorbelKit/Services/Const.h"
#include "CorbelKit/Services/ResourceBundle.h"
#include "Platform/FileManager.h"
#include "Platform/MainThread.h"
#include "Platform/NeverDestroyed.h"
#include "Platform/TextServices.h"
#include "Platform/URL.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace Vesper_Pro_Agent {
namespace {

namespace Const = CorbelKit::Const;
using Platform::TextServices::lowercased;

std::string replaceAll(std::string_view text, std::string_view from, std::string_view to) {
    std::string result;
    for (;;) {
        const auto found = text.find(from);
        result += text.substr(0, found);
        if (found == std::string_view::npos)
            return result;
        result += to;
        text.remove_prefix(found + from.size());
    }
}

std::string jobName(const JobChange& change) {
    if (change.label && change.kind != ChangeKind::deleted)
        return *change.label;
    return Platform::URL::file(change.path).lastPathComponent();
}

std::string changeWord(ChangeKind kind, const ChangeWording& wording) {
    switch (kind) {
    case ChangeKind::added:
        return wording.localizedString("New");
    case ChangeKind::modified:
        return Platform::TextServices::capitalized(wording.localizedString("modified"));
    case ChangeKind::deleted:
        return wording.localizedString("Deleted");
    }
    return {};
}

// A home at the root (some system users have it) would turn every slash into a tilde.
std::string displayPath(const std::string& path, const std::string& homePath) {
    if (homePath.empty() || homePath == "/")
        return path;
    return replaceAll(path, homePath, "~");
}

std::string body(const JobChange& change, const ChangeWording& wording) {
    const auto word = changeWord(change.kind, wording);
    const auto path = displayPath(change.path, wording.homePath);
    if (wording.layoutDirection == Platform::LayoutDirection::rightToLeft)
        return path + " :" + word;
    return word + ": " + path;
}

} // namespace

ChangeFilter::ChangeFilter(Texts exceptions, const Texts& excludePrefixes)
    : exceptions_(std::move(exceptions)) {
    std::ranges::sort(exceptions_);
    Texts inOrder;
    std::ranges::transform(excludePrefixes, std::back_inserter(inOrder), lowercased);
    std::ranges::sort(inOrder);
    for (auto& beginning : inOrder) {
        const bool isCovered = !beginnings_.empty() && beginning.starts_with(beginnings_.back());
        if (!beginning.empty() && !isCovered)
            beginnings_.push_back(std::move(beginning));
    }
}

bool ChangeFilter::isException(std::string_view name) const {
    return std::ranges::binary_search(exceptions_, name);
}

// Of all that come before the name, only the last can be its beginning.
bool ChangeFilter::beginsAsExcluded(std::string_view name) const {
    if (beginnings_.empty())
        return false;
    const auto lowercase = lowercased(name);
    const auto behind = std::ranges::upper_bound(beginnings_, lowercase);
    return behind != beginnings_.begin() && lowercase.starts_with(*std::prev(behind));
}

ChangeWording ChangeWording::current() {
    const auto home = Platform::FileManager::homeDirectoryForRealUser();
    return {.homePath = home ? home->path() : std::string(),
            .layoutDirection = Platform::Application::userInterfaceLayoutDirection(),
            .localizedString = CorbelKit::localizedString};
}

bool isReported(const JobChange& change, const ChangeFilter& filter) {
    // A deleted job is excepted by its former label as well as by its file's name.
    if (change.kind == ChangeKind::deleted && filter.isException(change.label.value_or("")))
        return false;
    const auto name = jobName(change);
    return !name.starts_with(Const::Miscellaneous::identifierPrefix) && !filter.isException(name) &&
           !filter.beginsAsExcluded(name);
}

CorbelKit::PostedNotification describe(const JobChange& change, const ChangeWording& wording) {
    return {
        .title = replaceAll(wording.localizedString("%@ noticed a change"), "%@",
                            Const::App::Name::vesperPro),
        .body = body(change, wording),
        .identifier = change.kind == ChangeKind::deleted ? std::string() : change.path,
        .category = std::string(Const::NotificationCategory::Vesper::agent.rawValue()),
        .subtitle = std::nullopt,
    };
}

void postChange(const JobChange& change) {
    Platform::MainThread::check();
    static const Platform::NeverDestroyed<ChangeWording> wording(ChangeWording::current());
    CorbelKit::postNotification(describe(change, wording.get()));
}

} // namespace Vesper_Pro_Agent
