// A helper tool that measures folders for its clients, until it is asked to end: folder-helper
// The system starts it when a client calls; see README.md beside it.
#include "CorbelKit/Services/XPCListener.h"
#include "Helper/FolderSize.h"
#include "Platform/Application.h"
#include "Platform/Expected.h"
#include "Platform/FileManager.h"

#include <cstdlib>
#include <functional>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace {

using CorbelKit::XPCListener;
using Helper::FolderSize;

// Whoever calls may ask for anything: a folder is listed, and nothing is opened or changed.
XPCListener::Answer<FolderSize> measure(const std::string& path) {
    FolderSize size;
    const auto count = [&size](std::string_view /*name*/, bool isFolder) {
        ++size.entries;
        size.folders += isFolder ? 1 : 0;
    };
    const auto error = path.starts_with('/') ? Platform::FileManager::forEachEntry(path, {}, count)
                                             : Platform::Error{"not a path from the root"};
    if (error) {
        return XPCListener::Refusal{.name = Helper::noSuchFolder,
                                    .description = error->description};
    }
    return size;
}

class Tool final : public Platform::ApplicationDelegate {
public:
    Tool() {
        listener_.add(Helper::measure, std::function(measure));
        listener_.setInvalidationHandler([](const std::string& reason) {
            std::cerr << "folder-helper: " << reason << std::endl;
            std::_Exit(EXIT_FAILURE); // the system starts it anew when it is called
        });
    }

    void applicationDidFinishLaunching() override { listener_.resume(); }

    void applicationWillTerminate() override {}

private:
    XPCListener listener_{Platform::MachServiceName{.name = Helper::name}};
};

} // namespace

int main(int argumentCount, char** arguments) {
    return Platform::Application::run(argumentCount, arguments,
                                      [] { return std::make_unique<Tool>(); });
}
