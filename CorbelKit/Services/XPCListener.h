#pragma once

#include "CorbelKit/Coding/Coding.h"
#include "CorbelKit/Services/XPCConnection.h"
#include "Platform/ConnectionListener.h"

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>

namespace CorbelKit {

/// A helper tool's side of an `XPCConnection`: its methods, with arguments and values of any types
/// that can be coded in property lists. Rules on names, bounds and hostile clients are those of
/// `Platform::ConnectionListener`.
class XPCListener {
public:
    /// Why a method does not do what it is called for.
    using Refusal = Platform::CallRefusal;

    /// What a method returns.
    template <class Value>
    using Answer = Platform::Expected<Value, Refusal>;

    /// Given to a client that calls what is not there.
    static constexpr auto noSuchMethod = "com.tarnwell.Error.NoSuchMethod";
    /// Given to a client whose arguments are not those of the method.
    static constexpr auto badArguments = "com.tarnwell.Error.BadArguments";

    /// Listens when it is resumed.
    explicit XPCListener(Platform::MachServiceName service)
        : listener_(std::move(service), [methods = methods_](const auto& call, const auto& reply) {
            reply(answerOf(call, *methods));
        }) {}

    /// Has the method answer calls of the name, one after the other on the listener's queue. For
    /// before `resume`; one thread at a time.
    template <class Value, class... Arguments>
    void add(const std::string& name, std::function<Answer<Value>(Arguments...)> method) {
        (*methods_)[name] = [method = std::move(method)](const Values& values) {
            return callWith<Value, Arguments...>(method, values,
                                                 std::index_sequence_for<Arguments...>());
        };
    }

    /// As the listener of the platform.
    void setInvalidationHandler(Platform::ConnectionListener::InvalidationHandler handler) {
        listener_.setInvalidationHandler(std::move(handler));
    }

    /// As the listener of the platform.
    void resume() { listener_.resume(); }

private:
    using Values = Platform::PropertyList::Array;
    using Method = std::function<Platform::CallAnswer(const Values& values)>;
    using Methods = std::map<std::string, Method, std::less<>>;

    static Refusal mismatch(const std::string& description) {
        return {.name = badArguments, .description = description};
    }

    template <class Value, class... Arguments, std::size_t... indices>
    static Platform::CallAnswer callWith(const std::function<Answer<Value>(Arguments...)>& method,
                                         const Values& values,
                                         std::index_sequence<indices...> /*indices*/) {
        if (values.size() != sizeof...(Arguments))
            return mismatch("another number of arguments");
        const std::tuple arguments{decoded<std::remove_cvref_t<Arguments>>(
            values[indices], CodingFormat::propertyList)...};
        std::string fault;
        const auto check = [&fault](const auto& argument) {
            if (!argument && fault.empty())
                fault = argument.error().description();
        };
        (check(std::get<indices>(arguments)), ...);
        if (!fault.empty())
            return mismatch(fault);
        return coded(method(*std::get<indices>(arguments)...));
    }

    template <class Value>
    static Platform::CallAnswer coded(const Answer<Value>& answer) {
        if (!answer)
            return answer.error();
        if constexpr (std::is_same_v<Value, NoReply>) {
            return Platform::PropertyList();
        } else {
            auto value = encoded(*answer, CodingFormat::propertyList);
            if (!value) {
                return Refusal{.name = Refusal::Name::badAnswer,
                               .description = value.error().description()};
            }
            return std::move(*value);
        }
    }

    static Platform::CallAnswer answerOf(const Platform::ConnectionListener::Call& call,
                                         const Methods& methods) {
        const auto found = methods.find(call.method);
        if (found == methods.end())
            return Refusal{.name = noSuchMethod, .description = "no such method: " + call.method};
        return found->second(call.arguments);
    }

    // Of the call under way as well, when this object goes.
    const std::shared_ptr<Methods> methods_ = std::make_shared<Methods>();
    Platform::ConnectionListener listener_;
};

} // namespace CorbelKit
