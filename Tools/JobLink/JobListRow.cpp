#include "Tools/JobLink/JobListRow.h"

#include <glibmm/wrap.h>

#include <utility>

namespace JobLink {

JobListRow::JobListRow(ListedJob job)
    : job_(std::move(job)) {}

Glib::RefPtr<JobListRow> JobListRow::create(ListedJob job) {
    // NOLINTNEXTLINE(cppcoreguidelines-owning-memory): the reference owns it
    return Glib::make_refptr_for_instance(new JobListRow(std::move(job)));
}

void JobListRow::setJob(ListedJob job) {
    job_ = std::move(job);
    changed_.emit();
}

JobListRow* JobListRow::wrapped(void* object) {
    return dynamic_cast<JobListRow*>(Glib::wrap_auto(static_cast<GObject*>(object)));
}

} // namespace JobLink
