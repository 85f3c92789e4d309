#include "Platform/Application.h"

#include "Platform/Bundle.h"
#include "Platform/Linux/Bus/BusNames.h"
#include "Platform/Linux/Bus/SharedBus.h"
#include "Platform/Linux/Desktop/ServiceManager.h"
#include "Platform/MainThread.h"
#include "Platform/POSIX/ProcessStart.h"

#include <glib-unix.h>
#include <malloc.h>
#include <sys/eventfd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <future>
#include <iostream>
#include <memory>

namespace Platform::Application {
namespace {

struct MainLoopUnref {
    void operator()(GMainLoop* loop) const { g_main_loop_unref(loop); }
};

// What a large file takes while it is read goes back to the system when it is done with: left to
// itself, the allocator learns from the first such file to keep as much for the next.
void keepNoFreeMemory() {
    mallopt(M_MMAP_THRESHOLD, 128 * 1024);
    mallopt(M_TRIM_THRESHOLD, 128 * 1024);
}

// GLib's own source for signals would keep a thread for them.
void quitOnRequest(GMainLoop* loop) {
    static const int requests = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (requests == -1)
        return;
    struct sigaction action{};
    action.sa_flags = SA_RESTART;
    action.sa_handler = [](int /*signal*/) {
        const int before = errno;
        static_cast<void>(eventfd_write(requests, 1));
        errno = before;
    };
    for (const int signal : ProcessStart::endRequests())
        sigaction(signal, &action, nullptr);
    g_unix_fd_add(
        requests, G_IO_IN,
        [](gint /*descriptor*/, GIOCondition /*condition*/, gpointer data) -> gboolean {
            g_main_loop_quit(static_cast<GMainLoop*>(data));
            return G_SOURCE_REMOVE;
        },
        loop);
}

// False when another process of the session runs this application, after saying so. A bus that
// takes its time is not waited for: should the answer be that, the application ends when it comes.
bool becomeTheSessionsOnly(GMainLoop* loop) {
    constexpr auto patience = std::chrono::milliseconds(500);
    auto promise = std::make_shared<std::promise<bool>>();
    auto isOnly = promise->get_future();
    const auto queue = DispatchQueue::serial("com.tarnwell.Application");
    const auto quit = [loop] { g_main_loop_quit(loop); };
    SharedBus::session().whenConnected(queue, [quit, queue, promise](const auto& bus) {
        if (!bus) {
            promise->set_value(true);
            return;
        }
        bus->whenClosed(DispatchQueue::main(), [quit](const auto& /*reason*/) { quit(); });
        requestBusName(*bus, Bundle::main().text("CFBundleIdentifier"), queue, [=](bool isTaken) {
            if (isTaken) {
                std::cout << Bundle::main().text("CFBundleName") + " is already running.\n"
                          << std::flush;
                MainThread::run(quit);
            }
            promise->set_value(!isTaken);
        });
    });
    return isOnly.wait_for(patience) != std::future_status::ready || isOnly.get();
}

} // namespace

int run(int /*argumentCount*/, char** /*arguments*/,
        const std::function<std::unique_ptr<ApplicationDelegate>()>& makeDelegate) {
    MainThread::check();
    keepNoFreeMemory();
    ProcessStart::ensureStandardStreams();
    ProcessStart::setSignals();
    const std::unique_ptr<GMainLoop, MainLoopUnref> loop(g_main_loop_new(nullptr, FALSE));
    quitOnRequest(loop.get());
    if (!becomeTheSessionsOnly(loop.get()))
        return EXIT_SUCCESS;

    const auto delegate = makeDelegate();
    delegate->applicationDidFinishLaunching();
    g_main_loop_run(loop.get());
    notifyServiceManager("STOPPING=1");
    delegate->applicationWillTerminate();
    return EXIT_SUCCESS;
}

void announceReady() {
    MainThread::check();
    notifyServiceManager("READY=1");
}

} // namespace Platform::Application
