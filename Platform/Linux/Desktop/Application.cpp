#include "Platform/Application.h"

#include "Platform/AlertPresenter.h"
#include "Platform/Bundle.h"
#include "Platform/Linux/Bundle/ProgramName.h"
#include "Platform/Linux/Desktop/ServiceManager.h"
#include "Platform/Linux/Desktop/SoleInstance.h"
#include "Platform/Linux/Desktop/StartPages.h"
#include "Platform/Linux/Notifications/ScheduledNotifications.h"
#include "Platform/MainThread.h"
#include "Platform/POSIX/ProcessStart.h"
#include "Platform/StandardOutput.h"

#include <glib-unix.h>
#include <malloc.h>
#include <sys/eventfd.h>
#include <sys/time.h>
#include <sysexits.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>

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

// Whatever holds the main thread, a process that was asked to end does so within the second.
void endSoon() {
    static std::atomic_flag isEnding;
    if (isEnding.test_and_set())
        return;
    struct sigaction end{};
    end.sa_handler = [](int /*signal*/) { _exit(EXIT_SUCCESS); };
    sigaction(SIGALRM, &end, nullptr);
    const itimerval lastMoment{.it_interval = {}, .it_value = {.tv_sec = 0, .tv_usec = 900'000}};
    setitimer(ITIMER_REAL, &lastMoment, nullptr);
}

// GLib's own source for signals would keep a thread for them.
void quitOnRequest(std::function<void()>& quit) {
    static const int requests = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (requests == -1)
        return;
    struct sigaction action{};
    action.sa_flags = SA_RESTART;
    action.sa_handler = [](int /*signal*/) {
        const int before = errno;
        endSoon();
        static_cast<void>(eventfd_write(requests, 1));
        errno = before;
    };
    for (const int signal : ProcessStart::endRequests())
        sigaction(signal, &action, nullptr);
    g_unix_fd_add(
        requests, G_IO_IN,
        [](gint /*descriptor*/, GIOCondition /*condition*/, gpointer data) -> gboolean {
            (*static_cast<std::function<void()>*>(data))();
            return G_SOURCE_REMOVE;
        },
        &quit);
}

void sayThatAnotherRuns(const std::string& holder) {
    StandardOutput::writeLine(programName() + " is already running: " + holder + ".");
}

} // namespace

int run(int /*argumentCount*/, char** /*arguments*/,
        const std::function<std::unique_ptr<ApplicationDelegate>()>& makeDelegate) {
    MainThread::check();
    keepNoFreeMemory();
    ProcessStart::ensureStandardStreams();
    const std::unique_ptr<GMainLoop, MainLoopUnref> loop(g_main_loop_new(nullptr, FALSE));
    bool isAskedToEnd = false;
    std::function<void()> quit = [&] {
        isAskedToEnd = true; // perhaps before the loop runs, as an alert stands at the launch
        endAlerts();         // each in a loop of its own
        g_main_loop_quit(loop.get());
    };
    quitOnRequest(quit);
    ProcessStart::setSignals(); // from here on, a request that came before is answered

    int exitCode = EXIT_SUCCESS;
    std::unique_ptr<ApplicationDelegate> delegate;
    SoleInstance instance(Bundle::main().text("CFBundleIdentifier"),
                          {.launch =
                               [&] {
                                   delegate = makeDelegate();
                                   delegate->applicationDidFinishLaunching();
                               },
                           .leave =
                               [&](const std::string& holder) {
                                   sayThatAnotherRuns(holder);
                                   exitCode = EX_TEMPFAIL;
                                   quit();
                               },
                           .sessionEnded = quit});
    instance.claim();
    if (!isAskedToEnd)
        g_main_loop_run(loop.get());

    notifyServiceManager("STOPPING=1");
    if (delegate)
        delegate->applicationWillTerminate();
    deliverScheduledNotifications(std::chrono::milliseconds(350));
    StandardOutput::drain(std::chrono::milliseconds(150));
    return exitCode;
}

void announceReady() {
    MainThread::check();
    notifyServiceManager("READY=1");
    releaseStartPages();
}

} // namespace Platform::Application
