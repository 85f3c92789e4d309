#pragma once

#include "Platform/Appearance.h"
#include "Platform/Observation.h"

#include <functional>
#include <memory>

namespace Platform {

/// What the application is notified of in its life. Called on the main thread, and owned by `run`.
class ApplicationDelegate {
public:
    virtual ~ApplicationDelegate() = default;
    /// Once, when the process has become the application, and the main loop runs.
    virtual void applicationDidFinishLaunching() = 0;
    /// Once, when the process is about to end: the main loop does nothing more. Do here what must
    /// not wait for the destructor: the process may end without it.
    virtual void applicationWillTerminate() = 0;

protected:
    ApplicationDelegate() = default;
    ApplicationDelegate(const ApplicationDelegate&) = default;
    ApplicationDelegate& operator=(const ApplicationDelegate&) = default;
};

/// Where lines of the user interface begin.
enum class LayoutDirection { leftToRight, rightToLeft };

/// The process as an application without windows of its own.
namespace Application {

/// The application's main function. Makes the delegate, notifies it of the launch, runs the main
/// loop until the process is asked to end (by the user, the system or the end of the session),
/// notifies the delegate of that, and returns the exit code or ends with it. Called once, on the
/// main thread, with the arguments of the process.
///
/// Where the session runs one process of an application, a second one waits up to three seconds for
/// the first to end, and otherwise returns a failure that calls for another try, without a launch.
/// A request to end is answered within a second, if need be without the delegate: the process then
/// ends here.
int run(int argumentCount, char** arguments,
        const std::function<std::unique_ptr<ApplicationDelegate>()>& makeDelegate);

/// Lets who started the process know that it is at its work now, where somebody waits for that (a
/// service manager). Main thread, once.
void announceReady();

/// The direction of the user interface in the user's language. Callable on any thread.
LayoutDirection userInterfaceLayoutDirection();

/// How the user has chosen that applications look, light where that is not known. Follows the
/// user's choice while the main loop runs. Callable on any thread; the first call may take a
/// quarter of a second, and one on another thread than the main one may wait for the main thread.
Appearance effectiveAppearance();

/// Has the handler called on the main thread when that has become another one, while the main loop
/// runs and until the observation ends, which the handler itself may do. The present one is not
/// reported; `effectiveAppearance` gives the new one. Main thread, in an application that is
/// running.
[[nodiscard]] Observation observeEffectiveAppearance(std::function<void()> handler);

} // namespace Application
} // namespace Platform
