#pragma once

#include "Platform/DispatchQueue.h"
#include "Platform/Mutex.h"
#include "Platform/Native/NativeListener.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>

namespace Platform {

/// The account of one listener: which calls are under way, of whom, and how much they hold. What a
/// user gave it is neither called nor destroyed with the mutex held.
class ConnectionListener::State : public std::enable_shared_from_this<State> {
public:
    State(MachServiceName service, CallHandler handler);

    void setInvalidationHandler(InvalidationHandler handler);
    void resume();
    void invalidate();
    void answer(std::uint64_t number, CallAnswer answer);

private:
    struct UnderWay {
        std::string client;
        std::size_t size = 0; // of the arguments
    };

    NativeListener::Events events();
    void called(std::uint64_t number, const std::string& client, Call call);
    void invalidated(std::string reason);
    void deliver(std::uint64_t number, Call call);
    bool begin(std::uint64_t number, const std::string& client, std::size_t size)
        CORBEL_REQUIRES(mutex_);
    void send(std::uint64_t number, CallAnswer answer) CORBEL_REQUIRES(mutex_);

    const MachServiceName service_;
    const std::shared_ptr<const CallHandler> handler_;
    const DispatchQueue queue_ = DispatchQueue::serial("com.tarnwell.ConnectionListener");
    Mutex mutex_;
    bool isResumed_ CORBEL_GUARDED_BY(mutex_) = false;                 // it may be over as well
    std::unique_ptr<NativeListener> native_ CORBEL_GUARDED_BY(mutex_); // while it listens
    InvalidationHandler invalidationHandler_ CORBEL_GUARDED_BY(mutex_);
    std::map<std::uint64_t, UnderWay> underWay_ CORBEL_GUARDED_BY(mutex_);
    std::map<std::string, std::size_t, std::less<>> callsOf_ CORBEL_GUARDED_BY(mutex_);
    std::size_t size_ CORBEL_GUARDED_BY(mutex_) = 0; // of all arguments under way
};

} // namespace Platform
