#pragma once

#include <gtkmm/applicationwindow.h>

#include <functional>
#include <string>

namespace JobLink {

/// All jobs of all watched folders. Main thread.
class JobListWindow final : public Gtk::ApplicationWindow {
public:
    /// `showJob` opens the job at the path in its window.
    explicit JobListWindow(std::function<void(const std::string& path)> showJob);

private:
    const std::function<void(const std::string& path)> showJob_;
};

} // namespace JobLink
