#pragma once

#include "Platform/Connection.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace Platform {

/// Why a helper does not do what it was called for. A client gets both as a `ConnectionError` of
/// the kind `refused`.
struct CallRefusal {
    /// For programs: two or more words of letters, digits and "_" with dots between them, none of
    /// which begins with a digit; at most 255 characters. Others become `Name::refused`.
    std::string name;
    std::string description; ///< one line for people

    /// The names that a listener gives by itself.
    struct Name {
        /// Too many calls are under way, of this client or in all.
        static constexpr auto busy = "com.tarnwell.Error.Busy";
        /// A call that `Connection` would not have sent.
        static constexpr auto badCall = "com.tarnwell.Error.BadCall";
        /// Nobody took it upon himself to answer.
        static constexpr auto noAnswer = "com.tarnwell.Error.NoAnswer";
        /// The answer is a value that no message holds.
        static constexpr auto badAnswer = "com.tarnwell.Error.BadAnswer";
        /// For a refusal without a proper name.
        static constexpr auto refused = "com.tarnwell.Error.Refused";
    };
};

/// What a helper answers with: a value, null for none, or a refusal.
using CallAnswer = Expected<PropertyList, CallRefusal>;

/// The side of a helper process: takes the calls that clients make by a `Connection` to its name.
///
/// Its clients may be anybody. What they send is bounded as what `Connection` sends; at most 16
/// calls of one client and 64 in all are under way at a time, with 64 MiB of arguments; what is
/// beyond that is refused, and costs the helper nothing. A client that goes away needs no
/// attention: answers to it are dropped.
///
/// All operations may be called on any thread, and none of them waits.
///
/// On Linux the name is one on the session bus, with the privileged option on the system bus, which
/// starts the helper when a service file says how (D-Bus 0.38, "Message Bus Starting Services").
/// On macOS it is a Mach service of the launchd job that the helper is (launchd.plist(5),
/// "MachServices").
class ConnectionListener {
public:
    /// What a client asks for.
    struct Call {
        std::string method;            ///< a name as `Connection::call` takes it
        PropertyList::Array arguments; ///< at most 32
    };

    /// Answers one call, on any thread, now or later: the first answer counts. Copies mean the same
    /// call; it is refused when the last of them goes without an answer.
    class Reply {
    public:
        /// A second answer does nothing.
        void operator()(CallAnswer answer) const;

    private:
        friend class ConnectionListener;
        class Pending;
        explicit Reply(std::shared_ptr<Pending> pending);

        std::shared_ptr<Pending> pending_;
    };

    /// Called with one call after the other, on the listener's own serial queue. Must not throw.
    using CallHandler = std::function<void(Call call, Reply reply)>;

    /// Called on that queue with why there will be no more calls, in one line: the name belongs to
    /// another process, may not be had, or the message bus is gone.
    using InvalidationHandler = std::function<void(std::string reason)>;

    /// Listens when it is resumed.
    ConnectionListener(MachServiceName service, CallHandler handler);

    /// Invalidates.
    ~ConnectionListener();
    ConnectionListener(const ConnectionListener&) = delete;
    ConnectionListener& operator=(const ConnectionListener&) = delete;
    ConnectionListener(ConnectionListener&&) = delete;
    ConnectionListener& operator=(ConnectionListener&&) = delete;

    /// For before `resume`. The handler runs at most once; `invalidate` and the destructor do not
    /// call it.
    void setInvalidationHandler(InvalidationHandler handler);

    /// Takes the name, and calls from then on. A second time does nothing.
    void resume();

    /// Takes no more calls, and drops the answers to those under way. A call handler under way goes
    /// on.
    void invalidate();

private:
    class State;

    const std::shared_ptr<State> state_;
};

} // namespace Platform
