// Has the helper tool measure a folder: folder-client <folder>
#include "CorbelKit/Services/HelperToolAlert.h"
#include "CorbelKit/Services/XPCConnection.h"
#include "Helper/FolderSize.h"
#include "Platform/Application.h"
#include "Platform/MainThread.h"
#include "Platform/URL.h"

#include <csignal>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>
#include <utility>

namespace {

using CorbelKit::XPCConnection;
using Helper::FolderSize;
using Platform::ConnectionError;

class Client final : public Platform::ApplicationDelegate {
public:
    explicit Client(std::string path)
        : path_(std::move(path)) {
        connection_.limit = std::chrono::seconds(5);
        connection_.presentError = true;
    }

    // The reply comes on the connection's queue; what is the application's own happens on the main
    // thread.
    void applicationDidFinishLaunching() override {
        connection_.resume();
        connection_.call<FolderSize>(
            Helper::measure,
            [this](const auto& reply) {
                Platform::MainThread::run([this, reply] { finish(reply); });
            },
            path_);
    }

    void applicationWillTerminate() override {}

private:
    void finish(const Platform::Expected<FolderSize, ConnectionError>& reply) {
        if (reply) {
            std::cout << path_ << ": " << reply->entries << " entries, " << reply->folders
                      << " of them folders" << std::endl;
            end();
        } else if (reply.error().kind == ConnectionError::Kind::refused) {
            std::cout << reply.error().name << ": " << reply.error().description << std::endl;
            end();
        } else if (connection_.presentError) { // no helper, or one that does not answer
            std::cerr << "folder-client: " << reply.error().description << std::endl;
            CorbelKit::showHelperToolAlert(end);
        }
    }

    static void end() { std::raise(SIGTERM); }

    const std::string path_; // of the folder, from the root
    XPCConnection connection_{Platform::MachServiceName{.name = Helper::name}};
};

} // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount != 2) {
        std::cerr << "usage: folder-client <folder>\n";
        return EXIT_FAILURE;
    }
    const auto path = Platform::URL::file(arguments[1]).path();
    return Platform::Application::run(argumentCount, arguments,
                                      [&] { return std::make_unique<Client>(path); });
}
