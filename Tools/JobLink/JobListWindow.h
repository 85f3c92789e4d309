#pragma once

#include "Tools/JobLink/JobListPage.h"
#include "Tools/JobLink/ReportingPage.h"

#include <gtkmm/applicationwindow.h>
#include <gtkmm/headerbar.h>
#include <gtkmm/stack.h>
#include <gtkmm/stackswitcher.h>

#include <functional>
#include <string>

namespace JobLink {

/// All jobs of all watched folders. Main thread.
class JobListWindow final : public Gtk::ApplicationWindow {
public:
    /// `showJob` opens the job at the path in its window.
    explicit JobListWindow(std::function<void(const std::string& path)> showJob);

private:
    Gtk::HeaderBar header_;
    Gtk::StackSwitcher switcher_;
    Gtk::Stack pages_;
    JobListPage jobs_;
    ReportingPage reporting_;
};

} // namespace JobLink
