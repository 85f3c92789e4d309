#include "CorbelKit/Services/UserDataFile.h"

#include "CorbelKit/Services/ResourceBundle.h"
#include "Platform/Alert.h"
#include "Platform/FileContents.h"
#include "Platform/FileManager.h"
#include "Platform/Log.h"
#include "Platform/MainThread.h"
#include "Platform/ProcessActivity.h"

namespace CorbelKit::UserDataFile {
namespace {

/// As much as a property list may cost in memory.
constexpr std::size_t largestFile = std::size_t{64} << 20U;

} // namespace

std::optional<Platform::Error> write(std::span<const std::byte> data, const Platform::URL& url,
                                     std::string_view reason) {
    using Platform::ProcessActivity;
    auto activity = ProcessActivity::begin(ProcessActivity::Options::userInitiated, reason);
    if (auto error = Platform::FileContents::write(url, data))
        return error;
    activity.end();
    return std::nullopt;
}

void report(const Platform::Error& error) {
    Platform::log("Error: " + error.description);
    Platform::MainThread::run([error] {
        Platform::runModal({.messageText = localizedString("An error occurred while saving"),
                            .informativeText = error.description,
                            .buttonTitle = localizedString("OK"),
                            .style = Platform::Alert::Style::warning});
    });
}

Platform::Expected<std::vector<std::byte>> read(const std::optional<Platform::URL>& url) {
    if (!url)
        return std::vector<std::byte>();
    auto data = Platform::FileContents::read(*url, largestFile);
    if (!data && !Platform::FileManager::fileExists(*url))
        return std::vector<std::byte>();
    return data;
}

} // namespace CorbelKit::UserDataFile
