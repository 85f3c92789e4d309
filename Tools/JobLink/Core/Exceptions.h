#pragma once

#include "Platform/Expected.h"

#include <optional>
#include <string>
#include <string_view>

/// The labels of which the agent does not notify, in the settings that it shares with this program.
/// All wait for the disk and for other programs that store there, so not for the main thread.
namespace JobLink::Exceptions {

/// As the agent sees it.
bool contain(const std::string& label);

/// The agent follows at once. After a failure, of which it gives the reason, nothing has changed; a
/// list that is none of texts is left as it is, and a failure.
std::optional<Platform::Error> set(const std::string& label, bool isExcepted);

/// Likewise, of either list: that under the key has the text, or does not.
std::optional<Platform::Error> setListed(std::string_view key, const std::string& text,
                                         bool isListed);

} // namespace JobLink::Exceptions
