#include "CorbelKit/Services/UserDataFile.h"

#include "CorbelKit/Services/ResourceBundle.h"
#include "CorbelKit/Services/SaveRequest.h"
#include "Platform/Alert.h"
#include "Platform/FileContents.h"
#include "Platform/Log.h"

namespace CorbelKit::UserDataFile {

std::optional<Platform::Error> write(std::span<const std::byte> data, const Platform::URL& url,
                                     std::string_view reason) {
    return SaveRequest::make(url, [data] { return data; }, reason)->serve();
}

void report(const Platform::Error& error) {
    Platform::log("Error: " + error.description);
    Platform::showAlert({.messageText = localizedString("An error occurred while saving"),
                         .informativeText = error.description,
                         .buttonTitle = localizedString("OK"),
                         .style = Platform::Alert::Style::warning});
}

Platform::Expected<std::vector<std::byte>> read(const std::optional<Platform::URL>& url) {
    if (!url)
        return std::vector<std::byte>();
    SaveRequest::serveAll(*url);
    auto data = Platform::FileContents::read(*url, Platform::PropertyList::largestOwnFile);
    if (!data && Platform::FileContents::isMissing(*url))
        return std::vector<std::byte>();
    return data;
}

void noteLoaded(const std::optional<Platform::URL>& url, bool isUnderstood) {
    if (url)
        SaveRequest::setAsideNext(*url, !isUnderstood);
}

} // namespace CorbelKit::UserDataFile
