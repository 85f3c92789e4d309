#include "Tools/JobLink/Core/JobWording.h"

#include "CorbelKit/Formats/Octal.h"
#include "Platform/Calendar.h"
#include "Tools/JobLink/Core/Texts.h"

#include <array>
#include <cstdio>

namespace JobLink {
namespace {

std::string_view textKey(JobStart::Kind kind) {
    using Kind = JobStart::Kind;
    switch (kind) {
    case Kind::login:
        return "At login";
    case Kind::load:
        return "When it is loaded";
    case Kind::systemStart:
        return "When the system starts";
    case Kind::kept:
        return "Whenever it ends";
    case Kind::interval:
        return "Every %@ seconds";
    case Kind::calendar:
        return "By calendar: %@";
    case Kind::timer:
        return "By timer: %@";
    case Kind::change:
        return "When %@ changes";
    case Kind::mount:
        return "When a disk is mounted";
    case Kind::demand:
        return "On demand: %@";
    case Kind::with:
        return "With %@";
    case Kind::onlyIn:
        return "Only in %@";
    case Kind::notIn:
        return "Not in %@";
    case Kind::onlyIf:
        return "Only if there is %@";
    case Kind::more:
        return "\u2026"; // in every language
    }
    return "";
}

} // namespace

std::string startText(const JobStart& start) {
    return localizedString(textKey(start.kind), start.detail);
}

std::string startsText(const JobDescription& description) {
    std::string text;
    for (const auto& start : description.starts)
        text.append(text.empty() ? "" : ", ").append(startText(start));
    if (!text.empty())
        return text;
    const bool isUnderstood = description.kind != JobDescription::Kind::other;
    return localizedString(isUnderstood ? "Not by itself" : "Not known");
}

std::string timeText(std::chrono::sys_seconds time) {
    const auto parts = Platform::Calendar::gregorian().dateComponents(
        std::chrono::time_point_cast<Platform::Calendar::Date::duration>(time));
    if (!parts)
        return localizedString("Not known");
    std::array<char, 96> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02d %02d:%02d:%02d", parts->year,
                  parts->month, parts->day, parts->hour, parts->minute, parts->second);
    return text.data();
}

std::string permissionsText(unsigned permissions) {
    return CorbelKit::Octal::symbolic(CorbelKit::Octal::string(permissions),
                                      CorbelKit::Octal::Mode::permission);
}

} // namespace JobLink
