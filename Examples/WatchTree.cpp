// Says in which folders of a tree something changes, also in files: watch-tree <folder>
#include "CorbelKit/Monitors/FileSystemMonitor.h"
#include "Platform/Application.h"
#include "Platform/FileManager.h"
#include "Platform/MainThread.h"

#include <cstdlib>
#include <iostream>
#include <memory>
#include <utility>

namespace {

using CorbelKit::FileSystemMonitor;
using Platform::URL;

class Reporter final : public CorbelKit::MonitorDelegate {
public:
    // Called on the monitors' queue, with each folder once for all that happened in a second.
    void monitorDidChange(const URL& url) override {
        Platform::MainThread::run(
            [path = url.path()] { std::cout << "Look again at " << path << std::endl; });
    }
};

class TreeWatch final : public Platform::ApplicationDelegate {
public:
    explicit TreeWatch(const URL& folder)
        : monitor_(FileSystemMonitor::make(folder)) {
        monitor_->setDelegate(reporter_);
    }

    void applicationDidFinishLaunching() override {
        std::cout << "Watching " << monitor_->url().path() << " until Control-C" << std::endl;
    }

    void applicationWillTerminate() override { monitor_->stopMonitoring(); }

private:
    std::shared_ptr<FileSystemMonitor> monitor_;
    // The monitor holds it weakly.
    std::shared_ptr<Reporter> reporter_ = std::make_shared<Reporter>();
};

} // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount != 2) {
        std::cerr << "usage: watch-tree <folder>\n";
        return EXIT_FAILURE;
    }
    const auto folder = URL::file(arguments[1], URL::DirectoryHint::isDirectory);
    if (!Platform::FileManager::contentsOfDirectory(folder)) {
        std::cerr << arguments[1] << " is no folder that can be watched\n";
        return EXIT_FAILURE;
    }
    return Platform::Application::run(argumentCount, arguments,
                                      [&] { return std::make_unique<TreeWatch>(folder); });
}
