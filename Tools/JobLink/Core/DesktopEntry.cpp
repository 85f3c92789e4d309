#include "Platform/TextServices.h"
#include "Tools/JobLink/Core/DescribedText.h"
#include "Tools/JobLink/Core/Dialects.h"
#include "Tools/JobLink/Core/KeyFile.h"

#include <algorithm>
#include <set>
#include <string>
#include <vector>

namespace JobLink::Dialects {
namespace {

using Start = JobStart::Kind;

constexpr std::string_view group = "Desktop Entry";

std::string_view localizedName(const KeyFile& entry) {
    for (auto language : Platform::TextServices::preferredLanguages()) {
        std::ranges::replace(language, '-', '_');
        for (const auto& locale : {language, language.substr(0, language.find('_'))}) {
            if (const auto name = entry.value(group, "Name[" + locale + "]"))
                return *name;
        }
        if (language.starts_with("en"))
            break;
    }
    return entry.value(group, "Name").value_or("");
}

/// "GNOME;KDE;" as "GNOME, KDE".
std::string listed(std::string_view names) {
    std::string text;
    while (!names.empty()) {
        const auto name = takeUntil(names, ";");
        if (!name.empty())
            text.append(text.empty() ? "" : ", ").append(name);
    }
    return text;
}

/// As those who start entries read it: they do not agree on what a line is.
std::vector<KeyFile> readings(std::string_view content) {
    std::vector<KeyFile> files{KeyFile::read(content, KeyFile::Lines::joined)};
    if (!KeyFile::isReadAlike(content))
        files.push_back(KeyFile::read(content, KeyFile::Lines::apart));
    return files;
}

/// All that may be run: systemd takes the first of several commands, GLib the last.
void describeCommands(const std::vector<KeyFile>& files, JobDescription& description) {
    std::set<std::string_view> known;
    for (const auto& file : files) {
        for (const auto command : file.allValues(group, "Exec")) {
            if (known.insert(command).second)
                addRun(description, command);
        }
    }
}

} // namespace

// Autostart 0.5, and what desktops have added.
JobDescription describeDesktopEntry(std::string_view content) {
    const auto files = readings(content);
    const auto& entry = files.front();
    JobDescription description{.kind = JobDescription::Kind::desktopEntry,
                               .title = describedText(localizedName(entry))};
    describeCommands(files, description);
    // What single desktops have for that does not keep the others from starting it.
    description.isTurnedOff = std::ranges::all_of(
        files, [](const KeyFile& file) { return file.isTrue(group, "Hidden"); });
    addStart(description, Start::login);

    struct Condition {
        std::string_view key;
        Start kind;
    };

    for (const auto& [key, kind] :
         {Condition{.key = "OnlyShowIn", .kind = Start::onlyIn},
          Condition{.key = "NotShowIn", .kind = Start::notIn},
          Condition{.key = "TryExec", .kind = Start::onlyIf},
          Condition{.key = "AutostartCondition", .kind = Start::onlyIf}}) {
        const auto value = entry.value(group, key);
        const auto detail =
            kind == Start::onlyIf ? std::string(value.value_or("")) : listed(value.value_or(""));
        if (!detail.empty())
            addStart(description, kind, detail);
    }
    return description;
}

} // namespace JobLink::Dialects
