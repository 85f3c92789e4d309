#include "Vesper_Pro_Agent/AppDelegate.h"

#include "Platform/MainThread.h"
#include "Vesper_Pro_Agent/LegacyCleanUp.h"
#include "Vesper_Pro_Agent/MonitorFolders.h"

namespace Vesper_Pro_Agent {

void AppDelegate::applicationDidFinishLaunching() {
    Platform::MainThread::check();
    removeLegacyAgents(
        [] { MonitorFolders::shared().start(Platform::Application::announceReady); });
}

void AppDelegate::applicationWillTerminate() {
    Platform::MainThread::check();
    auto& folders = MonitorFolders::shared();
    for (const auto& monitor : folders.monitors())
        monitor->stopMonitoring();
    folders.stop();
}

} // namespace Vesper_Pro_Agent
