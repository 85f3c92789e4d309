#pragma once

#include "Tools/JobLink/Core/JobPlace.h"
#include "Tools/JobLink/JobListWindow.h"
#include "Tools/JobLink/JobWindow.h"
#include "Tools/JobLink/MessageWindow.h"

#include <gtkmm/application.h>

#include <deque>
#include <map>
#include <memory>
#include <string>

namespace JobLink {

/// The application "Vesper Pro": a window for each job that a link leads to, and one with all jobs.
/// One process of a session runs it; what is started beside that hands its links over and ends.
/// Main thread.
class JobLinkApplication final : public Gtk::Application {
public:
    JobLinkApplication();

    /// Shows the job in its window, which is made where there is none; or says why not. Whoever
    /// sends the paths may send any, and many.
    void showJob(const std::string& path);

protected:
    void on_startup() override;
    int on_command_line(const Glib::RefPtr<Gio::ApplicationCommandLine>& commandLine) override;
    void on_activate() override;

private:
    void takeLink(std::string link);
    void followLinks();
    void followLink(const std::string& link);
    void say(const std::string& message, const std::string& detail);

    // Destroyed a little after they were closed.
    std::map<std::string, std::unique_ptr<JobWindow>> jobWindows_; // by path
    std::unique_ptr<JobListWindow> list_;
    std::unique_ptr<MessageWindow> message_;
    std::deque<std::string> links_; // that wait for their turn, each once
};

} // namespace JobLink
