#include "Vesper_Pro_Agent/NotificationDelegate.h"

#include "CorbelKit/Services/Const.h"
#include "Platform/Base64.h"
#include "Platform/DispatchQueue.h"
#include "Platform/Log.h"
#include "Platform/Workspace.h"

#include <string>
#include <utility>

namespace Vesper_Pro_Agent {
namespace {

namespace Const = CorbelKit::Const;
namespace Workspace = Platform::Workspace;

void act(std::string_view actionIdentifier, std::string_view requestIdentifier) {
    // A click on the notification itself, or its dismissal, is not meant for the main application.
    if (actionIdentifier != Const::NotificationAction::show.rawValue()) {
        Platform::log("Unknown action");
        return;
    }
    const auto url = requestIdentifier.empty()
                         ? Workspace::urlForApplication(Const::App::Identifier::vesperPro)
                         : jobLink(requestIdentifier);
    if (url)
        Workspace::open(*url);
}

} // namespace

// Of the path's bytes, whether they are text or not. The Base64 stands in the link as it is, "/"
// and "+" included: the main application reads what follows "://" as given.
std::optional<Platform::URL> jobLink(std::string_view path) {
    return Platform::URL::parse(std::string(Const::App::URL::jobLinkScheme)
                                    .append("://")
                                    .append(Platform::base64EncodedString(path)));
}

void NotificationDelegate::
    userNotificationCenterDidReceiveNotificationResponseWithCompletionHandler(
        Platform::UserNotificationCenter& /*center*/,
        const Platform::NotificationResponse& response, std::function<void()> completionHandler) {
    // Looking for the application reads files, and the system's log may not take the line at once.
    const auto queue = Platform::DispatchQueue::blocking("com.tarnwell.NotificationDelegate");
    queue.async([actionIdentifier = response.actionIdentifier,
                 requestIdentifier = response.request.identifier,
                 completionHandler = std::move(completionHandler)] {
        act(actionIdentifier, requestIdentifier);
        completionHandler();
    });
}

} // namespace Vesper_Pro_Agent
