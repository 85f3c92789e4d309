#include "Tools/JobLink/Core/JobDescription.h"

#include "Tools/JobLink/Core/DescribedText.h"
#include "Tools/JobLink/Core/Dialects.h"

namespace JobLink {

JobDescription describeJob(const JobPlace& place, std::span<const std::byte> content) {
    const std::string_view text(reinterpret_cast<const char*>(content.data()), content.size());
    const auto folder = place.folder.lastPathComponent();
    if (folder == "cron.d")
        return Dialects::describeCronTable(text);
    if (folder == "init.d")
        return Dialects::describeInitScript(place, text);
    if (place.name.ends_with(".desktop"))
        return Dialects::describeDesktopEntry(text);
    if (Dialects::isUnit(place.name))
        return Dialects::describeUnit(place.name, text);
    return Dialects::describeLaunchdJob(content);
}

JobDescription describeJob(const JobPlace& place, const JobFile& file) {
    constexpr unsigned anybodyExecutes = 0111;
    if (file.reading == JobFile::Reading::read && !file.content.empty()) {
        auto description = describeJob(place, file.content);
        const bool isProgram = description.kind == JobDescription::Kind::other &&
                               (file.permissions & anybodyExecutes) != 0;
        if (isProgram)
            addRun(description, place.path());
        return description;
    }
    JobDescription description;
    const bool isMasked = Dialects::isUnit(place.name) && (file.linkTarget == "/dev/null" ||
                                                           file.reading == JobFile::Reading::read);
    description.isTurnedOff = isMasked; // by what systemctl mask makes of a unit
    return description;
}

} // namespace JobLink
