#include "Platform/Linux/Desktop/FrontWindow.h"

#include "Platform/DispatchQueue.h"
#include "Platform/Linux/Desktop/AccessibilityBus.h"
#include "Platform/Linux/Desktop/DesktopEntries.h"
#include "Platform/Linux/Desktop/FrontWindowX11.h"
#include "Platform/MainThread.h"
#include "Platform/NeverDestroyed.h"

#include <chrono>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <utility>

namespace Platform {
namespace {

constexpr auto patience = std::chrono::milliseconds(500);

bool isSet(const char* variable) {
    const char* const value = std::getenv(variable);
    return value != nullptr && !std::string_view(value).empty();
}

using Completion = std::function<void(std::optional<std::string> name)>;

/// Puts the question to a thread of its own, where it may take as long as the desktop does: neither
/// connecting to an X server nor an answer from it can be given a deadline of its own, and the name
/// is read from files. While one question has no answer there is no second, so a stuck desktop
/// holds one thread at most. Main thread, but for `find`.
class Desktop {
public:
    void ask(Completion completion) {
        const auto question = std::make_shared<Completion>(std::move(completion));
        if (std::exchange(isBusy_, true)) {
            MainThread::run([question] { answer(*question, std::nullopt); });
            return;
        }
        queue_.async([this, question] {
            MainThread::run([this, question, name = findName()] {
                isBusy_ = false;
                answer(*question, name);
            });
        });
        DispatchQueue::main().asyncAfter(patience, [question] { answer(*question, std::nullopt); });
    }

private:
    // Once.
    static void answer(Completion& question, const std::optional<std::string>& name) {
        if (const auto completion = std::exchange(question, nullptr))
            completion(name);
    }

    std::optional<std::string> findName() {
        const auto window = find();
        if (!window)
            return std::nullopt;
        return DesktopEntries::localizedName(*window).value_or(window->className);
    }

    std::optional<FrontWindow> find() {
        const bool hasX11 = isSet("DISPLAY");
        if (hasX11) {
            if (auto window = x11_.activeWindow())
                return window;
        }
        // A Wayland session has an X server too, for the windows that still need one.
        if (!hasX11 || isSet("WAYLAND_DISPLAY"))
            return AccessibilityBus::activeFrame(patience);
        return std::nullopt;
    }

    bool isBusy_ = false; // main thread
    X11Session x11_;      // the question's thread
    const DispatchQueue queue_ = DispatchQueue::blocking("com.tarnwell.FrontWindow");
};

} // namespace

void findFrontApplication(Completion completion) {
    MainThread::check();
    static const NeverDestroyed<Desktop> desktop;
    desktop.get().ask(std::move(completion));
}

} // namespace Platform
