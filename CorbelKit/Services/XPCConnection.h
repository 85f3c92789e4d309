#pragma once

#include "CorbelKit/Coding/Coding.h"
#include "Platform/Connection.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace CorbelKit {

/// The reply of a method that has nothing to say. Takes any value for that.
struct NoReply {
    /// Fails for nothing.
    static NoReply decode(const Decoder& /*decoder*/) { return {}; }
};

/// A connection to a helper tool: a privileged helper that is registered with the system, or a
/// service inside the application bundle. Made in the four ways in which its base is, whose rules
/// on threads, failures and ownership are its own.
class XPCConnection : public Platform::Connection {
public:
    /// Called with a reply of the type, on the connection's queue.
    template <class Reply>
    using ReplyCompletion =
        std::function<void(Platform::Expected<Reply, Platform::ConnectionError> reply)>;

    using Connection::Connection;

    /// The call of plain values.
    using Connection::call;

    /// Calls with arguments and a reply of any types that can be coded in property lists. A reply
    /// of another type is a bad reply; an argument that cannot be coded makes a bad call, which
    /// is not sent. The completion is called exactly once; an empty one is not.
    template <class Reply, class... Arguments>
    void call(std::string method, ReplyCompletion<Reply> completion,
              const Arguments&... arguments) {
        Platform::PropertyList::Array values;
        std::optional<CodingError> error;
        (append(asCoded(arguments), values, error), ...);
        if (error) // let the base report it: in its order, on its queue
            values.emplace_back();
        Connection::call(
            std::move(method), std::move(values),
            [completion = std::move(completion),
             error = std::move(error)](const Platform::ConnectionReply& reply) {
                if (completion)
                    completion(decodedReply<Reply>(reply, error));
            },
            limit);
    }

    /// How long each call with types may take that is made from now on. Not synchronised: one
    /// thread at a time.
    Platform::CallLimit limit = Platform::noLimit;

    /// Whether a failure of this connection is to be presented to the user, with the helper-tool
    /// alert. The connection itself does not look at it. Not synchronised: one thread at a time.
    bool presentError = false;

private:
    using Error = Platform::ConnectionError;

    template <class Argument>
    static decltype(auto) asCoded(const Argument& argument) {
        if constexpr (std::is_convertible_v<const Argument&, std::string_view>) {
            return std::string(std::string_view(argument));
        } else {
            return (argument);
        }
    }

    template <class Argument>
    static void append(const Argument& argument, Platform::PropertyList::Array& values,
                       std::optional<CodingError>& error) {
        auto value = encoded(argument, CodingFormat::propertyList);
        if (value) {
            values.push_back(std::move(*value));
        } else if (!error) {
            error = value.error();
        }
    }

    template <class Reply>
    static Platform::Expected<Reply, Error> decodedReply(const Platform::ConnectionReply& reply,
                                                         const std::optional<CodingError>& error) {
        if (!reply && reply.error().kind == Error::Kind::badCall && error)
            return Error{.kind = Error::Kind::badCall, .description = error->description()};
        if (!reply)
            return reply.error();
        auto value = decoded<Reply>(*reply, CodingFormat::propertyList);
        if (!value)
            return Error{.kind = Error::Kind::badReply, .description = value.error().description()};
        return std::move(*value);
    }
};

} // namespace CorbelKit
