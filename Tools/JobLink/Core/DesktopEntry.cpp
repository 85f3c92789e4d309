#include "Platform/TextServices.h"
#include "Tools/JobLink/Core/DescribedText.h"
#include "Tools/JobLink/Core/Dialects.h"
#include "Tools/JobLink/Core/KeyFile.h"

#include <algorithm>
#include <string>

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

} // namespace

// Autostart 0.5, and what desktops have added.
JobDescription describeDesktopEntry(std::string_view content) {
    const auto entry = KeyFile::read(content, KeyFile::Lines::apart);
    JobDescription description{.kind = JobDescription::Kind::desktopEntry,
                               .title = describedText(localizedName(entry))};
    addRun(description, entry.value(group, "Exec").value_or(""));
    description.isTurnedOff =
        entry.isTrue(group, "Hidden") || entry.value(group, "X-GNOME-Autostart-enabled") == "false";
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
