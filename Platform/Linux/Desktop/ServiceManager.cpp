#include "Platform/Linux/Desktop/ServiceManager.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <string>

namespace Platform {

// The protocol is one datagram; the manager's own library would bring in four more for it.
void notifyServiceManager(std::string_view state) {
    const char* name = std::getenv("NOTIFY_SOCKET");
    sockaddr_un address{};
    const std::string_view path = name != nullptr ? name : "";
    if (path.empty() || path.size() >= sizeof address.sun_path)
        return;
    address.sun_family = AF_UNIX;
    std::ranges::copy(path, address.sun_path);
    if (path.front() == '@') // an abstract address
        address.sun_path[0] = '\0';
    const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + path.size());

    const int socket = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    if (socket == -1)
        return;
    static_cast<void>(::sendto(socket, state.data(), state.size(), MSG_NOSIGNAL | MSG_DONTWAIT,
                               reinterpret_cast<const sockaddr*>(&address), length));
    ::close(socket);
}

} // namespace Platform
