// Says when something is added to a folder, removed or renamed: watch-folder <folder>
#include "CorbelKit/Monitors/SingleFolderMonitor.h"
#include "Platform/Application.h"
#include "Platform/MainThread.h"

#include <cstdlib>
#include <iostream>
#include <memory>
#include <utility>

namespace {

using CorbelKit::SingleFolderMonitor;
using Platform::URL;

class Reporter final : public CorbelKit::MonitorDelegate {
public:
    // Called on the monitors' queue. What is the application's own happens on the main thread.
    void monitorDidChange(const URL& url) override {
        Platform::MainThread::run(
            [path = url.path()] { std::cout << path << " has changed" << std::endl; });
    }
};

class FolderWatch final : public Platform::ApplicationDelegate {
public:
    explicit FolderWatch(std::shared_ptr<SingleFolderMonitor> monitor)
        : monitor_(std::move(monitor)) {}

    void applicationDidFinishLaunching() override {
        monitor_->setDelegate(reporter_);
        std::cout << "Watching " << monitor_->url().path() << " until Control-C" << std::endl;
    }

    void applicationWillTerminate() override { monitor_->stopMonitoring(); }

private:
    std::shared_ptr<SingleFolderMonitor> monitor_;
    // The monitor holds it weakly.
    std::shared_ptr<Reporter> reporter_ = std::make_shared<Reporter>();
};

} // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount != 2) {
        std::cerr << "usage: watch-folder <folder>\n";
        return EXIT_FAILURE;
    }
    const auto monitor =
        SingleFolderMonitor::make(URL::file(arguments[1], URL::DirectoryHint::isDirectory));
    if (!monitor->hasSource()) {
        std::cerr << arguments[1] << " is no folder that can be watched\n";
        return EXIT_FAILURE;
    }
    return Platform::Application::run(argumentCount, arguments,
                                      [&] { return std::make_unique<FolderWatch>(monitor); });
}
