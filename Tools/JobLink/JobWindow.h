#pragma once

#include "Platform/DispatchQueue.h"
#include "Tools/JobLink/Core/JobFile.h"

#include <gtkmm/applicationwindow.h>
#include <gtkmm/box.h>
#include <gtkmm/grid.h>
#include <gtkmm/label.h>

#include <memory>
#include <optional>
#include <string>

namespace JobLink {

/// One job: what it is, where it stands, and what can be done about it. Main thread; the file is
/// read elsewhere.
class JobWindow final : public Gtk::ApplicationWindow {
public:
    explicit JobWindow(JobPlace place);

private:
    void read();
    void display(const std::optional<JobFile>& file);
    void addLine(const std::string& caption, const std::string& text);

    const JobPlace place_;
    const Platform::DispatchQueue reading_ =
        Platform::DispatchQueue::serialBlocking("com.tarnwell.JobWindow");
    // What arrives later looks whether the window is still there.
    const std::shared_ptr<JobWindow*> self_ = std::make_shared<JobWindow*>(this);
    Gtk::Box content_{Gtk::Orientation::VERTICAL, 12};
    Gtk::Label name_;
    Gtk::Label state_;
    Gtk::Grid lines_;
    int lineCount_ = 0;
};

} // namespace JobLink
