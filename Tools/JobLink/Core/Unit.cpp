#include "Tools/JobLink/Core/DescribedText.h"
#include "Tools/JobLink/Core/Dialects.h"
#include "Tools/JobLink/Core/KeyFile.h"

#include <algorithm>
#include <array>
#include <string>

namespace JobLink::Dialects {
namespace {

using Start = JobStart::Kind;

// systemd.unit(5)
constexpr std::array<std::string_view, 11> suffixes{".service", ".timer", ".socket",    ".path",
                                                    ".target",  ".mount", ".automount", ".swap",
                                                    ".slice",   ".scope", ".device"};

// Without any of these systemctl can neither enable a unit nor bring back what it has disabled.
constexpr std::array installations{"WantedBy", "RequiredBy", "UpheldBy", "Alias"};

/// Those of a service and of what else runs commands.
void describeCommands(const KeyFile& unit, JobDescription& description) {
    for (const auto* const section : {"Service", "Socket", "Mount", "Swap"}) {
        for (const auto* const key : {"ExecCondition", "ExecStartPre", "ExecStart", "ExecStartPost",
                                      "ExecReload", "ExecStopPre", "ExecStop", "ExecStopPost"}) {
            for (const auto command : unit.values(section, key)) {
                const bool isChief = std::string_view(key) == "ExecStart";
                addRun(description, isChief ? std::string(command)
                                            : std::string(key) + '=' + std::string(command));
            }
        }
    }
}

struct Trigger {
    std::string_view section;
    std::string_view key;
    Start kind;
};

constexpr std::array triggers{
    Trigger{.section = "Timer", .key = "OnCalendar", .kind = Start::calendar},
    Trigger{.section = "Timer", .key = "OnActiveSec", .kind = Start::timer},
    Trigger{.section = "Timer", .key = "OnBootSec", .kind = Start::timer},
    Trigger{.section = "Timer", .key = "OnStartupSec", .kind = Start::timer},
    Trigger{.section = "Timer", .key = "OnUnitActiveSec", .kind = Start::timer},
    Trigger{.section = "Timer", .key = "OnUnitInactiveSec", .kind = Start::timer},
    Trigger{.section = "Path", .key = "PathExists", .kind = Start::change},
    Trigger{.section = "Path", .key = "PathExistsGlob", .kind = Start::change},
    Trigger{.section = "Path", .key = "PathChanged", .kind = Start::change},
    Trigger{.section = "Path", .key = "PathModified", .kind = Start::change},
    Trigger{.section = "Path", .key = "DirectoryNotEmpty", .kind = Start::change},
    Trigger{.section = "Socket", .key = "ListenStream", .kind = Start::demand},
    Trigger{.section = "Socket", .key = "ListenDatagram", .kind = Start::demand},
    Trigger{.section = "Socket", .key = "ListenSequentialPacket", .kind = Start::demand},
    Trigger{.section = "Socket", .key = "ListenFIFO", .kind = Start::demand},
    Trigger{.section = "Service", .key = "BusName", .kind = Start::demand},
    Trigger{.section = "Install", .key = "WantedBy", .kind = Start::with},
    Trigger{.section = "Install", .key = "RequiredBy", .kind = Start::with},
    Trigger{.section = "Install", .key = "UpheldBy", .kind = Start::with},
};

/// Such units start another one, of their own name unless they say which. Several are all given:
/// which of them systemd takes depends on the kind, and on what it takes for a unit's name.
void describeTriggered(std::string_view name, const KeyFile& unit, JobDescription& description) {
    struct Kind {
        std::string_view suffix;
        std::string_view section;
        std::string_view key;
    };

    for (const auto& [suffix, section, key] :
         {Kind{.suffix = ".timer", .section = "Timer", .key = "Unit"},
          Kind{.suffix = ".path", .section = "Path", .key = "Unit"},
          Kind{.suffix = ".socket", .section = "Socket", .key = "Service"}}) {
        if (!name.ends_with(suffix))
            continue;
        const auto own = std::string(name.substr(0, name.size() - suffix.size())) + ".service";
        const auto others = unit.allValues(section, key);
        for (const auto other : others)
            addRun(description, other);
        if (std::ranges::none_of(others, isUnit))
            addRun(description, own);
    }
}

} // namespace

bool isUnit(std::string_view name) {
    return std::ranges::any_of(suffixes,
                               [&](std::string_view suffix) { return name.ends_with(suffix); });
}

JobDescription describeUnit(std::string_view name, std::string_view content) {
    const auto unit = KeyFile::read(content, KeyFile::Lines::joined);
    JobDescription description{.kind = JobDescription::Kind::unit,
                               .title =
                                   describedText(unit.value("Unit", "Description").value_or(""))};
    description.isInstallable = std::ranges::any_of(
        installations, [&](const auto* key) { return !unit.values("Install", key).empty(); });
    describeTriggered(name, unit, description);
    describeCommands(unit, description);
    for (const auto& [section, key, kind] : triggers) {
        for (const auto value : unit.values(section, key)) {
            const bool isSetting = kind == Start::timer;
            addStart(description, kind,
                     isSetting ? std::string(key) + '=' + std::string(value) : std::string(value));
        }
    }
    return description;
}

} // namespace JobLink::Dialects
