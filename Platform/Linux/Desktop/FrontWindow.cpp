#include "Platform/Linux/Desktop/FrontWindow.h"

#include "Platform/DispatchQueue.h"
#include "Platform/Linux/Desktop/AccessibilityBus.h"
#include "Platform/Linux/Desktop/FrontWindowX11.h"
#include "Platform/MainThread.h"
#include "Platform/NeverDestroyed.h"

#include <chrono>
#include <cstdlib>
#include <future>
#include <memory>
#include <string_view>
#include <utility>

namespace Platform {
namespace {

constexpr auto patience = std::chrono::milliseconds(100);

bool isSet(const char* variable) {
    const char* const value = std::getenv(variable);
    return value != nullptr && !std::string_view(value).empty();
}

/// Puts the question to a worker, where it may take as long as the desktop does: neither
/// connecting to an X server nor an answer from it can be given a deadline of its own. While one
/// question has no answer there is no second, so a stuck desktop holds one worker at most.
class Desktop {
public:
    std::optional<FrontWindow> ask() {
        if (isBusy())
            return std::nullopt;
        auto promise = std::make_shared<std::promise<std::optional<FrontWindow>>>();
        answer_ = promise->get_future();
        queue_.async([this, promise = std::move(promise)] { promise->set_value(find()); });
        if (answer_.wait_for(patience) != std::future_status::ready)
            return std::nullopt;
        return answer_.get();
    }

private:
    bool isBusy() const {
        return answer_.valid() &&
               answer_.wait_for(std::chrono::seconds::zero()) != std::future_status::ready;
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

    std::future<std::optional<FrontWindow>> answer_; // main thread
    X11Session x11_;                                 // queue_
    const DispatchQueue queue_ = DispatchQueue::serial("com.tarnwell.FrontWindow");
};

} // namespace

std::optional<FrontWindow> findFrontWindow() {
    MainThread::check();
    static const NeverDestroyed<Desktop> desktop;
    return desktop.get().ask();
}

} // namespace Platform
