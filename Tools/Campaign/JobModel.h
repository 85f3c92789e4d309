#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

/// What the agent has to notify, computed by a second implementation that shares nothing with it:
/// it compares bytes, not digests, and looks for labels in the texts that the campaign itself
/// writes.
namespace Campaign {

/// The readable files that stand directly in the folders, path by path, with their bytes.
using Snapshot = std::map<std::string, std::string>;

Snapshot readFolders(const std::vector<std::filesystem::path>& folders);

/// Whether permissions let the item be read; asked of the permissions themselves, as the campaign
/// may have rights beyond them.
bool isReadable(const std::filesystem::path& path);

/// The user's settings.
struct Filter {
    std::vector<std::string> exceptions;
    std::vector<std::string> excludePrefixes;

    std::string propertyList() const;
};

/// The bodies that have to be notified, in whatever order.
struct Expectation {
    std::multiset<std::string> bodies;

    /// All deletions of a pass show as one, the last; more than one may be it where files had the
    /// same content and some of them moved.
    std::set<std::string> oneOf;
    bool mayBeNone = false;

    /// A service that goes before it has answered is succeeded by one that is given the same again.
    bool mayRepeat = false;
    std::set<std::string> fulfilled;

    /// Takes out what the body fulfils; false when it was not expected.
    bool fulfil(const std::string& body);

    bool isFulfilled() const { return bodies.empty() && (oneOf.empty() || mayBeNone); }

    std::string text() const;
};

Expectation compare(const Snapshot& before, const Snapshot& after, const Filter& filter,
                    const std::string& home);

} // namespace Campaign
