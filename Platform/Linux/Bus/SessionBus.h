#pragma once

#include "Platform/DispatchQueue.h"
#include "Platform/Linux/Loops/GObjectPtr.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace Platform {

/// What a call over the bus came to.
struct GLibBusReply {
    enum class Outcome : std::uint8_t {
        answered,
        refused, ///< by an error, by an answer of another type, or by none within the deadline
        gone,    ///< nobody has the destination's name (any more), or the bus itself has gone
    };

    Outcome outcome = Outcome::refused;
    std::shared_ptr<GVariant> value; ///< when answered
    std::string description;         ///< otherwise why, in one line
};

struct GLibBusMethod {
    std::string destination;
    std::string path;
    std::string interface;
    std::string name;
    std::string replyType; ///< a D-Bus signature in parentheses; an answer of another is a refusal
};

struct GLibBusSignalRule {
    std::string sender;
    std::string path;
    std::string interface;
    std::string firstArgument; ///< empty: any
    std::string name;          ///< empty: any
};

struct GLibBusSignal {
    std::string sender; ///< the unique name
    std::string name;
    std::shared_ptr<GVariant> arguments;
};

/// Whether the environment tells of a bus: by its address, or by the user's runtime folder. Where
/// it does not, GLib would start one.
bool sessionHasBus();

/// Signals that are listened to. Dropping it stops that; signals already on their way to the queue
/// may still come.
class GLibBusSubscription {
public:
    GLibBusSubscription(GDBusConnection* connection, guint identifier);
    ~GLibBusSubscription();
    GLibBusSubscription(const GLibBusSubscription&) = delete;
    GLibBusSubscription& operator=(const GLibBusSubscription&) = delete;
    GLibBusSubscription(GLibBusSubscription&&) = delete;
    GLibBusSubscription& operator=(GLibBusSubscription&&) = delete;

private:
    GDBusConnection* connection_; // lives as long as the process
    guint identifier_;
};

/// The process's one connection to the session's message bus. All operations may be called on any
/// thread. Answers and signals pass through the main thread's loop, in the order in which they
/// came, and on to the queue that is named for them.
class SessionBus {
public:
    /// A call that nobody answered for so long counts as refused.
    static constexpr std::chrono::milliseconds deadline{5000};

    /// Connects at the first call, within the deadline. `task` then runs on the queue, with null
    /// where the session has no bus: the environment names none, or it cannot be reached.
    static void whenConnected(const DispatchQueue& queue,
                              std::function<void(SessionBus* bus)> task);

    /// The same connection for a caller that waits for it; null without one. Needs no main loop.
    static std::unique_ptr<SessionBus> connect(std::chrono::milliseconds patience);

    explicit SessionBus(GObjectPtr<GDBusConnection> connection);

    void call(const GLibBusMethod& method, const GVariantPtr& arguments, const DispatchQueue& queue,
              std::function<void(GLibBusReply reply)> completion);

    /// Waits for the answer, not for the main thread; null when there is none while the patience
    /// (1 ms and more) lasts, or a refusal. Starts the destination where the bus knows how to.
    GVariantPtr callAndWait(const GLibBusMethod& method, const GVariantPtr& arguments,
                            std::chrono::milliseconds patience);

    std::unique_ptr<GLibBusSubscription> subscribe(const GLibBusSignalRule& rule,
                                                   const DispatchQueue& queue,
                                                   std::function<void(GLibBusSignal signal)> task);

    /// Owns the name as long as the process lives. False when another process does, and then this
    /// one does not stand in line for it. Waits for the answer: not for the main thread.
    bool requestName(const std::string& name);

    /// The task runs on the main thread when the bus has gone: the session has ended.
    void whenClosed(std::function<void()> task);

private:
    GObjectPtr<GDBusConnection> connection_;
};

/// The bus's own methods, by name.
GLibBusMethod glibBusDriverMethod(std::string name, std::string replyType);

} // namespace Platform
