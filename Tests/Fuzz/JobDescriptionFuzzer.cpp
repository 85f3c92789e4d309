#include "CorbelKit/Services/PrintableText.h"
#include "Tools/JobLink/Core/JobDescription.h"
#include "Tools/JobLink/Core/OffSwitch.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace {

void require(bool condition, const char* claim) {
    if (condition)
        return;
    std::fprintf(stderr, "not so: %s\n", claim);
    std::abort();
}

void requireSafe(const std::string& text) {
    require(text.size() < 6000, "a text can be shown");
    require(CorbelKit::printableText(text) == text, "a text is safe to show");
}

void checkHiding(const std::string& content) {
    const auto hidden = JobLink::hiddenEntry(content);
    const auto describe = [](std::string_view text) {
        return JobLink::describeJob(
            {.folder = Platform::URL::file("/autostart/"), .name = "a.desktop"},
            std::as_bytes(std::span(text)));
    };
    require(!hidden || describe(*hidden).isTurnedOff, "what is hidden is off");
    require(!hidden || describe(*hidden).runs == describe(content).runs,
            "nothing else has changed");
}

} // namespace

/// The first byte says what kind of file the others are.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    struct Kind {
        const char* folder;
        const char* name;
    };

    constexpr std::array<Kind, 7> kinds{{{"/autostart/", "a.desktop"},
                                         {"/system/", "a.service"},
                                         {"/system/", "a.timer"},
                                         {"/system/", "a.socket"},
                                         {"/cron.d/", "a"},
                                         {"/init.d/", "a"},
                                         {"/LaunchAgents/", "a.plist"}}};
    if (size == 0)
        return 0;
    const auto& kind = kinds.at(*data % kinds.size());
    const auto content = std::span(data, size).subspan(1);
    const auto description = JobLink::describeJob(
        {.folder = Platform::URL::file(kind.folder), .name = kind.name}, std::as_bytes(content));
    requireSafe(description.title);
    require(description.runs.size() < 30 && description.starts.size() < 30, "it is few lines");
    for (const auto& run : description.runs)
        requireSafe(run);
    for (const auto& start : description.starts)
        requireSafe(start.detail);
    if (&kind == &kinds.front())
        checkHiding({reinterpret_cast<const char*>(content.data()), content.size()});
    return 0;
}
