#include "Vesper_Pro_Agent/PatientWork.h"

#include "Platform/MainThread.h"

#include <chrono>
#include <cstddef>
#include <memory>
#include <utility>

namespace Vesper_Pro_Agent {
namespace {

constexpr auto patience = std::chrono::seconds(1);

/// The main thread's.
struct Waiting {
    std::size_t works;
    std::function<void()> completion; // none once it was called

    void end() {
        if (const auto call = std::exchange(completion, nullptr))
            call();
    }
};

} // namespace

void workPatiently(const Platform::DispatchQueue& queue,
                   const std::vector<std::function<void()>>& works,
                   std::function<void()> completion) {
    Platform::MainThread::check();
    const auto waiting = std::make_shared<Waiting>(
        Waiting{.works = works.size(), .completion = std::move(completion)});
    for (const auto& work : works) {
        queue.async([work, waiting] {
            work();
            Platform::MainThread::run([waiting] {
                if (--waiting->works == 0)
                    waiting->end();
            });
        });
    }
    Platform::DispatchQueue::main().asyncAfter(patience, [waiting] { waiting->end(); });
}

} // namespace Vesper_Pro_Agent
