#include "Tools/JobLink/Core/JobReport.h"

#include "Platform/FileManager.h"
#include "Platform/UTF8.h"
#include "Tools/JobLink/Core/DescribedText.h"
#include "Tools/JobLink/Core/Exceptions.h"
#include "Tools/JobLink/Core/Texts.h"

#include <grp.h>
#include <pwd.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

namespace JobLink {

namespace {

template <class Record, class Number>
std::string nameOf(Number number, int (*find)(Number, Record*, char*, std::size_t, Record**),
                   char* Record::* name) {
    std::array<char, 4096> buffer{};
    Record record{};
    Record* found = nullptr;
    if (find(number, &record, buffer.data(), buffer.size(), &found) != 0 || found == nullptr)
        return std::to_string(number);
    return record.*name;
}

std::string ownerText(const JobFile& file) {
    const auto user = nameOf(file.owner, getpwuid_r, &passwd::pw_name);
    return user + " (" + nameOf(file.group, getgrgid_r, &group::gr_name) + ')';
}

/// A unit that does not say what it is started with may have been linked to that by hand, in a
/// folder beside it. (systemd.unit(5))
void addLinks(const JobPlace& place, JobDescription& description) {
    const bool isSaid =
        std::ranges::count(description.starts, JobStart::Kind::with, &JobStart::kind) > 0;
    const auto entries = description.kind == JobDescription::Kind::unit && !isSaid
                             ? Platform::FileManager::contentsOfDirectory(place.folder)
                             : std::nullopt;
    for (const auto& folder : entries.value_or(std::vector<Platform::URL>())) {
        const std::filesystem::path name(folder.lastPathComponent());
        const auto kind = name.extension();
        if (kind != ".wants" && kind != ".requires" && kind != ".upholds")
            continue;
        std::error_code error;
        const auto link = std::filesystem::path(folder.path()) / place.name;
        if (std::filesystem::is_symlink(link, error))
            addStart(description, JobStart::Kind::with, name.stem().native());
    }
}

} // namespace

JobReport readJobReport(const JobPlace& place) {
    auto file = readJobFile(place);
    auto owner = file ? ownerText(*file) : std::string();
    auto description = file ? describeJob(place, *file) : JobDescription();
    addLinks(place, description);
    OffSwitch offSwitch(place, description);
    const bool isOff = offSwitch.isOff();
    const bool isExcepted = file && Exceptions::contain(file->label);
    return {.file = std::move(file),
            .owner = std::move(owner),
            .description = std::move(description),
            .offSwitch = std::move(offSwitch),
            .isOff = isOff,
            .isExcepted = isExcepted};
}

std::string stateText(const JobPlace& place, const JobReport& report) {
    if (!report.file)
        return localizedString("This file is no longer there.");
    switch (report.file->reading) {
    case JobFile::Reading::tooLarge:
        return localizedString("This file is too large for a job.");
    case JobFile::Reading::unreadable:
        return localizedString("You may not read this file.");
    case JobFile::Reading::link:
        return localizedString("This is a link to %@, which was not opened.",
                               describedText(report.file->linkTarget));
    case JobFile::Reading::notRegular:
        return localizedString("This is not a file and was not opened.");
    case JobFile::Reading::read:
        break;
    }
    if (report.isOff)
        return localizedString("This job is turned off.");
    if (!Platform::UTF8::isWellFormed(place.name))
        return localizedString("The name of this file is not text.");
    return {};
}

} // namespace JobLink
