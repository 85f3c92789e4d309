#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

namespace TestSupport {

/// The calls that the stand-in for a service gets, and how it answers them. May be used on any one
/// thread.
template <class Call>
class RecordedCalls {
public:
    enum class Manner : std::uint8_t {
        answers,
        refuses, ///< every call, with an error
        holds,   ///< records, and answers when told to
    };

    /// The next call that was not yet taken from here; absent when none comes in time.
    std::optional<Call> next(std::chrono::milliseconds deadline = std::chrono::seconds(20)) {
        std::unique_lock lock(mutex_);
        if (!received_.wait_for(lock, deadline, [this] { return !calls_.empty(); }))
            return std::nullopt;
        auto call = std::move(calls_.front());
        calls_.pop_front();
        return call;
    }

    void setManner(Manner manner) {
        const std::lock_guard lock(mutex_);
        manner_ = manner;
    }

    /// Answers what is held, in order.
    void answerHeld() {
        const std::lock_guard lock(mutex_);
        for (const auto& answer : std::exchange(held_, {}))
            answer();
    }

protected:
    using Answer = std::function<void(Call& call)>;

    /// Records the call, and answers it in one way or the other, now, later or never.
    void receive(Call call, const Answer& answer, const std::function<void()>& refuse) {
        const std::lock_guard lock(mutex_);
        if (manner_ == Manner::answers)
            answer(call);
        if (manner_ == Manner::refuses)
            refuse();
        if (manner_ == Manner::holds)
            held_.push_back([answer, call]() mutable { answer(call); });
        calls_.push_back(std::move(call));
        received_.notify_all();
    }

    std::mutex mutex_;
    std::condition_variable received_;
    Manner manner_ = Manner::answers;         // mutex_
    std::deque<Call> calls_;                  // mutex_
    std::vector<std::function<void()>> held_; // mutex_: each answers one
};

} // namespace TestSupport
