#include "Vesper_Pro_Agent/JobScanner.h"

#include <utility>

namespace Vesper_Pro_Agent {

using Platform::DispatchQueue;

JobScanner::JobScanner(std::vector<Platform::URL> folders, std::function<void()> lateEnd,
                       std::chrono::nanoseconds patience)
    : folders_(std::move(folders))
    , surroundings_{.lateReads = std::make_shared<LateReads>(std::move(lateEnd)),
                    .readers = DispatchQueue::blocking("com.tarnwell.JobScanner.readers"),
                    .timers = DispatchQueue::serial("com.tarnwell.JobScanner"),
                    .patience = patience} {}

JobScanner::~JobScanner() {
    stop();
}

void JobScanner::scan(std::shared_ptr<const JobSnapshot> previous, Completion completion) {
    const auto pass =
        std::make_shared<ScanPass>(surroundings_, std::move(previous), std::move(completion));
    pass_ = pass;
    pass->start(folders_);
}

void JobScanner::stop() {
    surroundings_.lateReads->silence();
    if (const auto pass = pass_.lock())
        pass->cancel();
}

} // namespace Vesper_Pro_Agent
