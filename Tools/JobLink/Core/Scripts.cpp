#include "Tools/JobLink/Core/DescribedText.h"
#include "Tools/JobLink/Core/Dialects.h"

#include <string>

// Cron's tables and init's scripts, of which every line counts for itself.
namespace JobLink::Dialects {
namespace {

using Start = JobStart::Kind;

constexpr std::string_view blanks = " \t";

std::string_view takeWord(std::string_view& line) {
    const auto word = takeUntil(line, blanks);
    line = trimmed(line);
    return word;
}

/// "NAME = value", with blanks wherever they please.
bool isVariable(std::string_view line) {
    const auto sign = line.find('=');
    if (sign == std::string_view::npos)
        return false;
    const auto name = trimmed(line.substr(0, sign));
    return name.find_first_of(blanks) == std::string_view::npos && !name.starts_with('@') &&
           !name.starts_with('*');
}

void describeLine(std::string_view line, JobDescription& description) {
    std::string when(takeWord(line));
    if (!when.starts_with('@')) {
        constexpr int furtherFields = 4;
        for (int field = 0; field < furtherFields; ++field)
            when.append(" ").append(takeWord(line));
    }
    const auto user = takeWord(line);
    if (line.empty())
        return; // which cron does not take
    if (when == "@reboot") {
        addStart(description, Start::systemStart);
    } else {
        addStart(description, Start::calendar, when);
    }
    addRun(description, std::string(user) + ": " + std::string(line));
}

} // namespace

// crontab(5), the tables of the system.
JobDescription describeCronTable(std::string_view content) {
    JobDescription description{.kind = JobDescription::Kind::cronTable};
    while (!content.empty()) {
        const auto line = trimmed(takeUntil(content, "\n"));
        if (!line.empty() && !line.starts_with('#') && !isVariable(line))
            describeLine(line, description);
    }
    return description;
}

JobDescription describeInitScript(const JobPlace& place, std::string_view content) {
    JobDescription description{.kind = JobDescription::Kind::initScript};
    addRun(description, place.path());
    bool isHeader = false;
    while (!content.empty()) {
        auto line = trimmed(takeUntil(content, "\n"));
        if (line == "### END INIT INFO")
            break;
        isHeader = isHeader || line == "### BEGIN INIT INFO";
        if (!isHeader || !line.starts_with('#'))
            continue;
        line = trimmed(line.substr(1));
        const auto key = takeUntil(line, ":");
        line = trimmed(line);
        if (key == "Short-Description") {
            description.title = describedText(line);
        } else if (key == "Default-Start" && !line.empty()) {
            addStart(description, Start::with, line);
        }
    }
    return description;
}

} // namespace JobLink::Dialects
