#include "Tools/Campaign/JobModel.h"

#include "Tests/Support/TemporaryFolder.h"

#include <algorithm>
#include <cctype>

namespace Campaign {
namespace {

namespace fs = std::filesystem;

std::string lowercase(std::string text) {
    std::ranges::transform(text, text.begin(), [](unsigned char c) { return std::tolower(c); });
    return text;
}

std::string labelOf(const std::string& content) {
    const std::string_view before = "<key>Label</key>\n\t<string>";
    const auto found = content.find(before);
    if (found == std::string::npos)
        return {};
    const auto start = found + before.size();
    return content.substr(start, content.find('<', start) - start);
}

std::string nameOf(const std::string& path) {
    return path.substr(path.rfind('/') + 1);
}

bool isReported(const std::string& name, const Filter& filter) {
    return !name.starts_with("com.tarnwell.") && std::ranges::count(filter.exceptions, name) == 0 &&
           std::ranges::none_of(filter.excludePrefixes, [&name](const std::string& prefix) {
               return lowercase(name).starts_with(lowercase(prefix));
           });
}

bool isReported(const std::string& path, const std::string& content, const Filter& filter) {
    const auto label = labelOf(content);
    return isReported(label.empty() ? nameOf(path) : label, filter);
}

bool isDeletionReported(const std::string& path, const std::string& content, const Filter& filter) {
    return std::ranges::count(filter.exceptions, labelOf(content)) == 0 &&
           isReported(nameOf(path), filter);
}

std::string displayed(const std::string& path, const std::string& home) {
    return path.starts_with(home) ? "~" + path.substr(home.size()) : path;
}

} // namespace

std::string Filter::propertyList() const {
    std::string text = "<plist><dict>";
    for (const auto& [key, list] :
         {std::pair("Exceptions", exceptions), std::pair("ExcludePrefixes", excludePrefixes)}) {
        text.append("<key>").append(key).append("</key><array>");
        for (const auto& item : list)
            text.append("<string>").append(item).append("</string>");
        text += "</array>";
    }
    return text + "</dict></plist>";
}

bool isReadable(const fs::path& path) {
    std::error_code failure;
    const auto status = fs::status(path, failure);
    return !failure && (status.permissions() & fs::perms::owner_read) != fs::perms::none;
}

Snapshot readFolders(const std::vector<fs::path>& folders) {
    Snapshot files;
    for (const auto& folder : folders) {
        if (!isReadable(folder))
            continue;
        for (const auto& entry : fs::directory_iterator(folder)) {
            if (entry.is_regular_file() && isReadable(entry) &&
                entry.path().filename() != ".DS_Store")
                files[entry.path()] = TestSupport::contentOf(entry);
        }
    }
    return files;
}

Expectation compare(const Snapshot& before, const Snapshot& after, const Filter& filter,
                    const std::string& home) {
    Expectation expected;
    std::multimap<std::string, std::string> gone; // paths by content
    std::map<std::string, std::size_t> arrived;   // how many files with content known before
    std::set<std::string> known;
    for (const auto& [path, content] : before) {
        known.insert(content);
        if (!after.contains(path))
            gone.emplace(content, path);
    }
    for (const auto& [path, content] : after) {
        const auto earlier = before.find(path);
        if (earlier == before.end() && known.contains(content)) {
            ++arrived[content];
        } else if (earlier == before.end() && isReported(path, content, filter)) {
            expected.bodies.insert("New: " + displayed(path, home));
        } else if (earlier != before.end() && earlier->second != content &&
                   isReported(path, content, filter)) {
            expected.bodies.insert("Modified: " + displayed(path, home));
        }
    }
    std::string last; // of what is deleted for certain
    std::set<std::string> doubtful;
    for (const auto& [content, path] : gone) {
        const bool isReportable = isDeletionReported(path, content, filter);
        if (isReportable && arrived[content] == 0) {
            last = std::max(last, path);
        } else if (isReportable && arrived[content] < gone.count(content)) {
            doubtful.insert(path);
        }
    }
    if (!last.empty())
        doubtful.insert(last);
    expected.mayBeNone = last.empty();
    for (auto path = doubtful.lower_bound(last); path != doubtful.end(); ++path)
        expected.oneOf.insert("Deleted: " + displayed(*path, home));
    return expected;
}

bool Expectation::fulfil(const std::string& body) {
    if (oneOf.contains(body)) {
        oneOf.clear();
        return true;
    }
    const auto found = bodies.find(body);
    if (found == bodies.end())
        return mayRepeat && fulfilled.contains(body);
    bodies.erase(found);
    fulfilled.insert(body);
    return true;
}

std::string Expectation::text() const {
    std::string text;
    for (const auto& body : bodies)
        text += "  " + body + "\n";
    for (const auto& body : oneOf)
        text += "  perhaps " + body + "\n";
    return text;
}

} // namespace Campaign
