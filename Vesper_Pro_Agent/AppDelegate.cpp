#include "Vesper_Pro_Agent/AppDelegate.h"

#include "Platform/MainThread.h"
#include "Vesper_Pro_Agent/LegacyCleanUp.h"
#include "Vesper_Pro_Agent/MonitorFolders.h"

namespace Vesper_Pro_Agent {

void AppDelegate::applicationDidFinishLaunching() {
    Platform::MainThread::check();
    removeLegacyAgents();
    MonitorFolders::shared().start();
}

void AppDelegate::applicationWillTerminate() {
    Platform::MainThread::check();
    for (const auto& monitor : MonitorFolders::shared().monitors())
        monitor->stopMonitoring();
}

} // namespace Vesper_Pro_Agent
