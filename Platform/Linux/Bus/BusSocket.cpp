#include "Platform/Linux/Bus/BusSocket.h"

#include "Platform/Linux/Bus/BusThread.h"

#include <asio/post.hpp>
#include <fcntl.h>
#include <poll.h>

#include <algorithm>
#include <limits>
#include <system_error>
#include <utility>

namespace Platform {
namespace {

constexpr auto longestTurn = std::chrono::milliseconds(2); // with one step more

std::string describe(int error) {
    return std::generic_category().message(error < 0 ? -error : error);
}

int start(sd_bus* bus, const std::string& place, bool isToBus) {
    int result = sd_bus_set_address(bus, place.c_str());
    if (result >= 0)
        result = sd_bus_set_bus_client(bus, isToBus ? 1 : 0);
    if (result >= 0)
        result = sd_bus_negotiate_fds(bus, isToBus ? 1 : 0);
    return result >= 0 ? sd_bus_start(bus) : result;
}

} // namespace

Expected<std::shared_ptr<BusSocket>> BusSocket::connect(const std::string& place, bool isToBus,
                                                        BusDeadline deadline, Handlers handlers) {
    sd_bus* made = nullptr;
    int result = sd_bus_new(&made);
    SDBus::BusPtr bus(made);
    if (result >= 0)
        result = start(bus.get(), place, isToBus);
    if (result < 0)
        return Error{describe(result)};
    const int descriptor = fcntl(sd_bus_get_fd(bus.get()), F_DUPFD_CLOEXEC, 0);
    if (descriptor == -1)
        return Error{describe(errno)};
    return std::make_shared<BusSocket>(std::move(bus), descriptor, deadline, std::move(handlers));
}

BusSocket::BusSocket(SDBus::BusPtr bus, int descriptor, BusDeadline deadline, Handlers handlers)
    : bus_(std::move(bus))
    , descriptor_(busExecutor(), descriptor)
    , deadline_(deadline)
    , handlers_(std::move(handlers)) {}

void BusSocket::resume() {
    if (sd_bus_is_open(bus_.get()) > 0) {
        await();
    } else {
        turnLater(); // which takes note of the end
    }
}

void BusSocket::close() {
    handlers_ = {};
    busTimers().cancel(timer_);
    std::error_code ignored;
    descriptor_.close(ignored);
    bus_.reset();
}

void BusSocket::turn() {
    isTurnDue_ = false;
    const auto end = BusClock::now() + longestTurn;
    while (handlers_.take() && BusClock::now() < end) {
        if (end_) {
            lose();
            return;
        }
        if (!proceed())
            return;
    }
    turnLater();
}

// False when there is nothing left to do at present.
bool BusSocket::proceed() {
    const int result = sd_bus_process(bus_.get(), nullptr);
    if (result < 0) {
        end_ = describe(result);
    } else if (sd_bus_is_open(bus_.get()) <= 0) {
        end_ = "closed by the other end";
    } else if (!isReady_ && sd_bus_is_ready(bus_.get()) > 0) {
        isReady_ = true;
        handlers_.ready();
    } else if (!isReady_ && BusClock::now() >= deadline_) {
        end_ = "no answer in time";
    } else if (result == 0 && handlers_.take()) { // a call whose time is over counts as nothing
        await();
        return false;
    }
    return true;
}

void BusSocket::turnLater() {
    if (std::exchange(isTurnDue_, true))
        return;
    asio::post(busExecutor(), [self = shared_from_this()] {
        if (self->bus_)
            self->turn();
    });
}

void BusSocket::await() {
    awaitDescriptor(asio::posix::stream_descriptor::wait_read, isReadAwaited_);
    const int events = sd_bus_get_events(bus_.get());
    if (events < 0 || (static_cast<unsigned>(events) & static_cast<unsigned>(POLLOUT)) != 0)
        awaitDescriptor(asio::posix::stream_descriptor::wait_write, isWriteAwaited_);
    awaitTime();
}

void BusSocket::awaitDescriptor(asio::posix::stream_descriptor::wait_type kind, bool& isAwaited) {
    if (std::exchange(isAwaited, true))
        return;
    descriptor_.async_wait(kind, [self = shared_from_this(), &isAwaited](const auto& error) {
        isAwaited = false;
        if (self->bus_ && !error)
            self->turnLater();
    });
}

// libsystemd's times are those of the same clock (CLOCK_MONOTONIC), in microseconds.
void BusSocket::awaitTime() {
    std::uint64_t timeout = 0;
    if (sd_bus_get_timeout(bus_.get(), &timeout) < 0)
        timeout = std::numeric_limits<std::uint64_t>::max();
    auto next = isReady_ ? BusDeadline::max() : deadline_;
    if (std::in_range<std::int64_t>(timeout) &&
        std::chrono::microseconds(timeout) < next.time_since_epoch()) {
        next = BusDeadline(std::chrono::microseconds(timeout));
    }
    if (timer_.first == next)
        return;
    busTimers().cancel(std::exchange(timer_, {}));
    if (next <= BusClock::now()) {
        turnLater();
    } else if (next != BusDeadline::max()) {
        timer_ = busTimers().start(next, [self = shared_from_this()] {
            if (self->bus_)
                self->turnLater();
        });
    }
}

void BusSocket::lose() {
    const auto lost = std::move(handlers_.lost);
    close();
    lost(end_.value_or(""));
}

} // namespace Platform
