#pragma once

#include "Platform/Expected.h"
#include "Platform/ListenerEndpoint.h"
#include "Platform/PropertyList.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace Platform {

/// Why a call of a helper process came to nothing.
struct ConnectionError {
    /// What became of the call.
    enum class Kind : std::uint8_t {
        interrupted, ///< the helper went away before it answered, or did not come up at all: it may
                     ///< or may not have done what it was asked. The connection remains usable
        invalidated, ///< the connection is invalid, and every further call fails like this one
        refused,     ///< the helper says no, or the message bus does on the way to it
        badReply,    ///< an answer that is no value, or not of the type that was asked for
        badCall,     ///< never sent: a helper cannot be given such a method or such arguments
        timedOut,    ///< no answer within the time limit: the helper may or may not have done what
                     ///< it was asked, or may do it yet
    };

    Kind kind = Kind::invalidated; ///< what became of the call
    std::string description;       ///< one line, in the helper's own words where it refused
    /// What the helper calls its error where it refused, for the program to tell one from another:
    /// on Linux the name of the D-Bus error ("org.example.Error.NoSuchFolder"), on macOS the domain
    /// of the NSError.
    std::string name = {};
};

/// How long a call may take at most.
using CallLimit = std::chrono::milliseconds;

/// For a call that may take as long as it likes.
inline constexpr CallLimit noLimit = CallLimit::max();

/// What a call of a helper comes to: the value that it answered with, null where it answered with
/// none, or why there is no answer.
using ConnectionReply = Expected<PropertyList, ConnectionError>;

/// The name of a service that comes with the application. On Linux a name on the session bus.
struct ServiceName {
    std::string name; ///< such as "com.example.Helper"
};

/// The name of a service that is registered with the system, such as a privileged helper tool. On
/// Linux a name on the session bus, with the privileged option on the system bus.
struct MachServiceName {
    /// Properties of such a connection, as a set. The values are those of NSXPCConnectionOptions.
    enum class Options : std::uint64_t {
        none = 0,               ///< a service of the user's session
        privileged = 1U << 12U, ///< a service of the whole system
    };

    std::string name;                ///< such as "com.example.PrivilegedHelper"
    Options options = Options::none; ///< bits without a meaning here go to the system as they are
};

/// A connection to a helper process, which may come and go meanwhile. All operations may be called
/// on any thread, and none of them waits for the helper.
///
/// Completions and handlers run one at a time on the connection's own serial queue, in the order of
/// what they report. They must not throw.
///
/// Life of a connection:
/// - It is made suspended, and connects when it is resumed for the first time. Suspensions count:
///   as many `resume` as `suspend`, and the one more that starts it. While it is suspended no
///   completion and no handler begins; what there is to report comes afterwards, in order. Calls
///   made before the start are sent with it; calls of a connection that was suspended later are
///   sent at once, and only their replies wait.
/// - A helper that goes away *interrupts*: the calls under way fail, and then the interruption
///   handler runs, once for each helper lost. The next call reaches its successor, which the
///   system starts where it knows how to.
/// - A message bus that goes away or cannot be reached, an endpoint where nobody listens, a name
///   that no service can have, the resuming of an unconfigured connection, and `invalidate`
///   *invalidate*: the calls under way fail, the invalidation handler runs, once, and then both
///   handlers are released; so a handler that holds the connection does not keep it for ever.
///   Nothing makes the connection valid again.
/// - Destroying the object invalidates it, whatever it is doing; its handlers and completions
///   may do that too. What is left to report is reported after the object has gone.
///
/// Every completion runs exactly once. A call ends with its answer, with the helper, with the
/// connection, or when its time is over, where it was given a limit.
///
/// How it looks to the helper, on Linux: a D-Bus method call. A service's object path is its name
/// with slashes for dots, its interface the name itself, each with "_" for what may not stand there
/// ("com.example.My-Helper": "/com/example/My_Helper" and "com.example.My_Helper"); at an endpoint
/// they are "/com/tarnwell/Helper" and "com.tarnwell.Helper", in direct conversation without a
/// bus. Each argument is one of the method's, of the type b (boolean), x (integer), t (integer
/// from 2^63 on), d (real number), s (text), ay (data), (d) (date: seconds since the Unix epoch,
/// UTC), av (array) or a{sv} (dictionary). The method answers with no value or one: of these types,
/// or of any that has an evident meaning (other integers, object paths, typed arrays and
/// dictionaries with keys of text, variants, structures as arrays), within 32 containers and the
/// cost that property lists have by default.
///
/// On macOS: an NSXPCConnection whose interface is the one method
/// `callMethod:arguments:reply:`, with objects of property lists.
class Connection {
public:
    /// Called with the outcome of a call. An empty one is not called.
    using Completion = std::function<void(ConnectionReply reply)>;

    /// Called with a change in the life of the connection. An empty one is not called.
    using Handler = std::function<void()>;

    /// An unconfigured connection, which leads nowhere: its calls fail at once.
    Connection();

    /// A connection to a service that comes with the application.
    explicit Connection(ServiceName service);

    /// A connection to a service that is registered with the system.
    explicit Connection(MachServiceName service);

    /// A connection to the listener that gave the endpoint.
    explicit Connection(ListenerEndpoint endpoint);

    /// Invalidates.
    virtual ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    Connection(Connection&&) = delete;
    Connection& operator=(Connection&&) = delete;

    /// One more than there were suspensions does nothing.
    void resume();

    /// A completion or handler under way goes on. Does nothing to what was invalidated.
    void suspend();

    /// Ends every suspension too: what there is left to report is reported. A second call does
    /// nothing.
    void invalidate();

    /// Replaces the handler that is notified of a helper lost. Kept until the connection is
    /// invalid.
    void setInterruptionHandler(Handler handler);

    /// Replaces the handler that is notified of the end. Kept until it has run.
    void setInvalidationHandler(Handler handler);

    /// Asks the helper. The method is a name of letters, digits and "_" that does not begin with a
    /// digit; at most 255 characters. At most 32 arguments go with it, of 20 containers within
    /// containers and about 16 MiB in all; their texts are UTF-8 without NUL; null and UID have no
    /// form there.
    ///
    /// The time limit counts from the call on, also while the connection is not resumed; a call
    /// that was not sent by then never is. An answer that comes later is dropped.
    void call(std::string method, PropertyList::Array arguments, Completion completion,
              CallLimit limit = noLimit);

private:
    class State;

    explicit Connection(std::shared_ptr<State> state);

    const std::shared_ptr<State> state_;
};

} // namespace Platform
