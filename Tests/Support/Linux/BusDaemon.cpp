#include "Tests/Support/Linux/BusDaemon.h"

#include <filesystem>
#include <stdexcept>
#include <vector>

namespace TestSupport {
namespace {

std::string configuration(const std::filesystem::path& folder) {
    return "<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN\" "
           "\"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd\">\n"
           "<busconfig><type>session</type><listen>unix:path=" +
           (folder / "bus").string() + "</listen><servicedir>" + (folder / "services").string() +
           "</servicedir><policy context=\"default\"><allow send_destination=\"*\"/>"
           "<allow eavesdrop=\"true\"/><allow own=\"*\"/></policy>"
           // Those of a session's bus, as the reference implementation is installed.
           "<limit name=\"max_incoming_bytes\">1000000000</limit>"
           "<limit name=\"max_outgoing_bytes\">1000000000</limit>"
           "<limit name=\"max_message_size\">1000000000</limit></busconfig>\n";
}

} // namespace

BusDaemon::BusDaemon(const ActivatableServices& services) {
    std::filesystem::create_directory(folder_ / "services");
    for (const auto& [name, command] : services) {
        writeFile(folder_ / "services" / (name + ".service"),
                  "[D-BUS Service]\nName=" + name + "\nExec=" + command + "\n");
    }
    writeFile(folder_ / "bus.conf", configuration(folder_.path()));
    daemon_ = std::make_unique<ChildProcess>(
        std::vector<std::string>{"dbus-daemon", "--nofork", "--print-address=1",
                                 "--config-file=" + (folder_ / "bus.conf").string()},
        // Where its services keep what they keep for the user.
        std::vector<std::string>{"HOME=" + folder_.path().string()});
    address_ = daemon_->readLine();
    if (address_.empty())
        throw std::runtime_error("dbus-daemon does not start");
}

} // namespace TestSupport
