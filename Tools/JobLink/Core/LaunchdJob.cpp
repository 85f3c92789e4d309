#include "Platform/PropertyList.h"
#include "Tools/JobLink/Core/DescribedText.h"
#include "Tools/JobLink/Core/Dialects.h"

#include <array>
#include <string>

namespace JobLink::Dialects {
namespace {

using Platform::PropertyList;
using Start = JobStart::Kind;

const std::string* textUnder(const PropertyList& job, std::string_view key) {
    const auto* const value = job.find(key);
    return value != nullptr ? value->get<std::string>() : nullptr;
}

bool isOn(const PropertyList* value) {
    const auto* const flag = value != nullptr ? value->get<bool>() : nullptr;
    return flag != nullptr && *flag;
}

std::string quotedWhereNeeded(const std::string& argument) {
    const bool isPlain =
        !argument.empty() && argument.find_first_of(" \t\n\"'\\") == std::string::npos;
    return isPlain ? argument : '"' + argument + '"';
}

/// As it would be typed, and no longer than can be shown.
void describeProgram(const PropertyList& job, JobDescription& description) {
    constexpr std::size_t mostBytes = 4096;
    const auto* program = textUnder(job, "Program");
    if (program == nullptr)
        program = textUnder(job, "BundleProgram");
    std::string command = program != nullptr ? quotedWhereNeeded(*program) : std::string();
    const auto* const list = job.find("ProgramArguments");
    const auto* const arguments = list != nullptr ? list->get<PropertyList::Array>() : nullptr;
    for (std::size_t index = program != nullptr ? 1 : 0;
         arguments != nullptr && index < arguments->size() && command.size() < mostBytes; ++index) {
        if (const auto* const argument = (*arguments)[index].get<std::string>())
            command += (command.empty() ? "" : " ") + quotedWhereNeeded(*argument);
    }
    addRun(description, command);
}

/// As cron has it: minute, hour, day, month, weekday.
std::string calendarText(const PropertyList& date) {
    std::string text;
    for (const auto* const key : {"Minute", "Hour", "Day", "Month", "Weekday"}) {
        const auto* const value = date.find(key);
        const auto* const number = value != nullptr ? value->get<std::int64_t>() : nullptr;
        text += (text.empty() ? "" : " ") +
                (number != nullptr ? std::to_string(*number) : std::string("*"));
    }
    return text;
}

void forEach(const PropertyList* value, const auto& task) {
    if (value == nullptr)
        return;
    if (const auto* const list = value->get<PropertyList::Array>()) {
        for (const auto& element : *list)
            task(element);
    } else if (const auto* const dictionary = value->get<PropertyList::Dictionary>();
               dictionary != nullptr) {
        task(*value);
    }
}

void describeTimes(const PropertyList& job, JobDescription& description) {
    const auto* const interval = job.find("StartInterval");
    const auto* const seconds = interval != nullptr ? interval->get<std::int64_t>() : nullptr;
    if (seconds != nullptr)
        addStart(description, Start::interval, std::to_string(*seconds));
    forEach(job.find("StartCalendarInterval"), [&](const PropertyList& date) {
        addStart(description, Start::calendar, calendarText(date));
    });
}

void describeEvents(const PropertyList& job, JobDescription& description) {
    for (const auto* const key : {"WatchPaths", "QueueDirectories"}) {
        forEach(job.find(key), [&](const PropertyList& path) {
            if (const auto* const text = path.get<std::string>())
                addStart(description, Start::change, *text);
        });
    }
    if (isOn(job.find("StartOnMount")))
        addStart(description, Start::mount);
    for (const auto* const key : {"MachServices", "Sockets", "LaunchEvents"}) {
        const auto* const services = job.find(key);
        const auto* const names =
            services != nullptr ? services->get<PropertyList::Dictionary>() : nullptr;
        if (names == nullptr)
            continue;
        for (const auto& [name, value] : *names)
            addStart(description, Start::demand, name);
    }
}

bool isJob(const PropertyList& list) {
    constexpr std::array keys{"Label", "Program", "ProgramArguments", "BundleProgram"};
    for (const auto* const key : keys) {
        if (list.find(key) != nullptr)
            return true;
    }
    return false;
}

} // namespace

JobDescription describeLaunchdJob(std::span<const std::byte> content) {
    constexpr PropertyList::Limits limits{.depth = 64, .cost = std::size_t{8} << 20U};
    JobDescription description;
    const auto list = PropertyList::read(content, limits);
    if (!list || !isJob(*list))
        return description;
    description.kind = JobDescription::Kind::launchdJob;
    describeProgram(*list, description);
    if (isOn(list->find("RunAtLoad")))
        addStart(description, Start::load);
    const auto* const keepAlive = list->find("KeepAlive");
    if (keepAlive != nullptr &&
        (isOn(keepAlive) || keepAlive->get<PropertyList::Dictionary>() != nullptr))
        addStart(description, Start::kept);
    describeTimes(*list, description);
    describeEvents(*list, description);
    description.isTurnedOff = isOn(list->find("Disabled"));
    return description;
}

} // namespace JobLink::Dialects
