#include "Tools/JobLink/Core/JobList.h"

#include "CorbelKit/Monitors/SingleFolderMonitor.h"
#include "CorbelKit/Services/Limit.h"
#include "CorbelKit/Services/PrintableText.h"
#include "Platform/FileManager.h"
#include "Platform/MainThread.h"
#include "Platform/TextServices.h"
#include "Tools/JobLink/Core/JobDescription.h"
#include "Tools/JobLink/Core/JobFile.h"
#include "Tools/JobLink/Core/JobWording.h"
#include "Vesper_Pro_Agent/PatientWork.h"

#include <utility>

namespace JobLink {
namespace {

using CorbelKit::printableText;
using Platform::MainThread::run;
using Platform::TextServices::lowercased;
using Vesper_Pro_Agent::JobSnapshot;
using Vesper_Pro_Agent::MonitoredJob;

// Writing one file raises several events.
constexpr double coalescingDelayInSeconds = 0.2;

constexpr std::size_t jobsAtOnce = 500; // handed to the main thread, which draws in between

/// What is known of the job by its path and label.
ListedJob listedJob(const std::string& path, const MonitoredJob& job, const std::string& homePath) {
    const auto fileName = path.substr(path.rfind('/') + 1);
    ListedJob listed{.path = path,
                     .name = printableText(job.label.value_or("").empty() ? fileName : *job.label),
                     .place = printableText(path)};
    if (homePath.size() > 1 && path.starts_with(homePath + '/'))
        listed.place = '~' + printableText(path.substr(homePath.size()));
    listed.sought = lowercased(listed.name + '\n' + listed.place);
    return listed;
}

void describeInto(ListedJob& listed, const std::vector<Platform::URL>& folders) {
    const auto place = jobPlace(listed.path, folders);
    const auto file = place ? readJobFile(*place) : std::nullopt;
    if (!file)
        return;
    const auto description = describeJob(*place, *file);
    for (const auto& command : description.runs)
        listed.runs.append(listed.runs.empty() ? "" : ", ").append(command);
    if (file->reading == JobFile::Reading::link)
        listed.runs = "\u2192 " + printableText(file->linkTarget);
    listed.starts = startsText(description);
    listed.changed = file->changed;
    listed.sought += lowercased('\n' + listed.runs + '\n' + listed.starts);
}

std::vector<std::string> missing(const JobSnapshot& before, const JobSnapshot& jobs) {
    std::vector<std::string> paths;
    for (const auto& job : before) {
        if (!jobs.find(job.path))
            paths.emplace_back(job.path);
    }
    return paths;
}

} // namespace

std::shared_ptr<JobList> JobList::make(std::vector<Platform::URL> folders, Observer observer) {
    auto list = std::make_shared<JobList>(Private(), std::move(folders), std::move(observer));
    list->watchFolders();
    return list;
}

JobList::JobList(Private, std::vector<Platform::URL> folders, Observer observer)
    : observer_(std::move(observer))
    , reader_(std::make_shared<Reader>())
    , jobs_(std::make_shared<JobSnapshot>()) {
    reader_->folders = std::move(folders);
    if (const auto home = Platform::FileManager::homeDirectoryForRealUser())
        reader_->homePath = home->path();
}

JobList::~JobList() {
    reader_->isCancelled = true;
    for (const auto& monitor : monitors_)
        monitor->stopMonitoring();
}

// Before the first look, so that nothing falls between the two; but for a folder that hangs, which
// is looked at when it answers.
void JobList::watchFolders() {
    std::vector<std::function<void()>> starts;
    for (const auto& folder : reader_->folders) {
        auto monitor = CorbelKit::SingleFolderMonitor::makeIdle(folder);
        monitor->setDelegate(weak_from_this());
        monitors_.push_back(monitor);
        starts.emplace_back([weak = weak_from_this(), monitor] {
            monitor->startMonitoring();
            run([weak, monitor] {
                const auto list = weak.lock();
                if (!list) {
                    monitor->stopMonitoring();
                } else if (list->scanner_) {
                    list->requestPass();
                }
            });
        });
    }
    Vesper_Pro_Agent::workPatiently(
        Platform::DispatchQueue::blocking("com.tarnwell.JobList.folders"), starts,
        [weak = weak_from_this()] {
            if (const auto list = weak.lock()) {
                list->scanner_ =
                    std::make_unique<Vesper_Pro_Agent::JobScanner>(list->reader_->folders, [weak] {
                        if (const auto changed = weak.lock())
                            changed->requestPass();
                    });
                list->look();
            }
        });
}

void JobList::monitorDidChange(const Platform::URL& /*url*/) {
    requestPass();
}

void JobList::requestPass() {
    CorbelKit::Limit::shared().request(coalescingIdentifier_, coalescingDelayInSeconds,
                                       [weak = weak_from_this()] {
                                           run([weak] {
                                               if (const auto list = weak.lock())
                                                   list->look();
                                           });
                                       });
}

void JobList::look() {
    if (!scanner_ || isReading_) {
        isPassDue_ = true;
        return;
    }
    isReading_ = true;
    scanner_->scan(jobs_, [queue = reading_, reader = reader_, before = jobs_,
                           weak = weak_from_this()](Vesper_Pro_Agent::ScanResult found) {
        auto jobs = std::make_shared<const JobSnapshot>(std::move(found.jobs));
        queue.async([=] { read(reader, before, jobs, weak); });
    });
}

// On the queue.
void JobList::read(const std::shared_ptr<Reader>& reader, const Snapshot& before,
                   const Snapshot& jobs, const std::weak_ptr<JobList>& weak) {
    const auto publish = [&weak](Change change) {
        run([weak, change = std::make_shared<Change>(std::move(change))] {
            if (const auto list = weak.lock())
                list->publish(std::move(*change));
        });
    };
    // Before the first look nothing is news, since everything would be.
    if (!reader->known)
        reader->known = std::make_unique<KnownJobs>(KnownJobs::load().value_or(KnownJobs(*jobs)));
    Change change{.stored = {}, .removed = missing(*before, *jobs)};
    for (const auto& each : *jobs) {
        const auto known = before->find(each.path);
        if (known && known->checksum == each.checksum)
            continue;
        const auto job = each.copy();
        auto& listed =
            change.stored.emplace_back(listedJob(std::string(each.path), job, reader->homePath));
        listed.news = reader->known->news(each.path, job);
    }
    auto undescribed = change.stored;
    const bool isOther = before->size() == 0 || !change.stored.empty() || !change.removed.empty();
    publish(std::move(change));

    change = {};
    for (auto& listed : undescribed) {
        if (reader->isCancelled)
            return;
        describeInto(listed, reader->folders);
        change.stored.push_back(std::move(listed));
        if (change.stored.size() == jobsAtOnce)
            publish(std::exchange(change, {}));
    }
    if (isOther)
        KnownJobs(*jobs).save();
    change.isComplete = true;
    publish(std::move(change));
    run([weak, jobs] {
        if (const auto list = weak.lock())
            list->endPass(jobs);
    });
}

void JobList::publish(Change change) const {
    observer_(std::move(change));
}

void JobList::endPass(Snapshot jobs) {
    jobs_ = std::move(jobs);
    isReading_ = false;
    if (std::exchange(isPassDue_, false))
        look();
}

} // namespace JobLink
