#include "Tools/JobLink/Core/JobPlace.h"

#include "CorbelKit/Services/Const.h"
#include "Platform/Base64.h"

#include <algorithm>

namespace JobLink {
namespace {

constexpr std::size_t longestPath = 4096; // PATH_MAX of Linux

} // namespace

std::string JobPlace::path() const {
    const auto folderPath = folder.path();
    return folderPath == "/" ? folderPath + name : folderPath + '/' + name;
}

std::optional<std::string> pathInLink(std::string_view link) {
    const auto prefix = std::string(CorbelKit::Const::App::URL::jobLinkScheme) + "://";
    if (!link.starts_with(prefix))
        return std::nullopt;
    link.remove_prefix(prefix.size());
    if (link.size() > longestPath / 3 * 4 + 4)
        return std::nullopt;
    const auto data = Platform::base64DecodedData(link);
    if (!data || data->empty())
        return std::nullopt;
    std::string path(reinterpret_cast<const char*>(data->data()), data->size());
    const bool isCanonical = Platform::base64EncodedString(path) == link;
    if (!isCanonical || path.find('\0') != std::string::npos || path.size() >= longestPath)
        return std::nullopt;
    return path;
}

std::optional<JobPlace> jobPlace(std::string_view path, std::span<const Platform::URL> folders) {
    const auto slash = path.rfind('/');
    if (slash == std::string_view::npos)
        return std::nullopt;
    const auto name = path.substr(slash + 1);
    if (name.empty() || name == "." || name == "..")
        return std::nullopt;
    const auto folderPath = path.substr(0, std::max<std::size_t>(slash, 1));
    const auto folder = std::ranges::find_if(
        folders, [&](const Platform::URL& known) { return known.path() == folderPath; });
    if (folder == folders.end())
        return std::nullopt;
    return JobPlace{.folder = *folder, .name = std::string(name)};
}

} // namespace JobLink
