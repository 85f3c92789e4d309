#pragma once

#include "Tools/JobLink/Core/JobList.h"
#include "Tools/JobLink/JobListRow.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace JobLink {

/// The rows of the list, one for each job: what stands in their model is decided here alone. Main
/// thread.
class JobListRows {
public:
    using Model = Gio::ListStore<JobListRow>;

    /// In no order that means anything. Each row is in it once.
    const Glib::RefPtr<Model>& model() const { return model_; }

    /// Follows the list. Gives whether rows that stay show other jobs now, which may belong to
    /// another place.
    bool take(JobList::Change change);

private:
    void remove(const std::vector<std::string>& paths);

    std::unordered_map<std::string, Glib::RefPtr<JobListRow>> rows_; // by path, all in the model
    const Glib::RefPtr<Model> model_ = Model::create();
};

} // namespace JobLink
