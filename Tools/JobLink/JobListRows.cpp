#include "Tools/JobLink/JobListRows.h"

#include <utility>

namespace JobLink {

// What goes leaves before what comes is among the rows, so that no row is put into the model twice.
bool JobListRows::take(JobList::Change change) {
    remove(change.removed);
    std::vector<Glib::RefPtr<JobListRow>> added;
    for (auto& job : change.stored) {
        auto& row = rows_[job.path];
        if (row) {
            row->setJob(std::move(job));
        } else {
            row = JobListRow::create(std::move(job));
            added.push_back(row);
        }
    }
    model_->splice(model_->get_n_items(), 0, added);
    return added.size() < change.stored.size();
}

void JobListRows::remove(const std::vector<std::string>& paths) {
    constexpr std::size_t mostOneByOne = 16; // more than that, and all are put anew
    const bool isOneByOne = paths.size() <= mostOneByOne;
    for (const auto& path : paths) {
        const auto row = rows_.extract(path);
        if (row.empty() || !isOneByOne)
            continue;
        if (const auto [isFound, position] = model_->find(row.mapped()); isFound)
            model_->remove(position);
    }
    if (isOneByOne)
        return;
    std::vector<Glib::RefPtr<JobListRow>> left;
    left.reserve(rows_.size());
    for (const auto& [path, row] : rows_)
        left.push_back(row);
    model_->splice(0, model_->get_n_items(), left);
}

} // namespace JobLink
