#pragma once

#include "Platform/DispatchQueue.h"
#include "Tools/JobLink/Core/JobReport.h"
#include "Tools/JobLink/JobButtons.h"
#include "Tools/JobLink/JobLines.h"
#include "Tools/JobLink/JobWatch.h"

#include <gtkmm/applicationwindow.h>
#include <gtkmm/box.h>
#include <gtkmm/label.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace JobLink {

/// One job: what it is, where it stands, and what can be done about it. Follows the file and the
/// settings while it is open. Main thread; what may block goes on elsewhere.
class JobWindow final : public Gtk::ApplicationWindow {
public:
    explicit JobWindow(JobPlace place);

private:
    using Failure = std::optional<Platform::Error>;

    void layOut();
    void connectButtons();
    void read();
    void display(JobReport report);
    void findPackage();
    void act(std::function<Failure()> action, std::function<std::string()> done,
             const std::string& failed);
    void toggleException();
    void toggleOff();
    void copyPath();
    void say(const std::string& message);

    const JobPlace place_;
    // A file that hangs holds no action, and a slow package system neither.
    const Platform::DispatchQueue reading_ =
        Platform::DispatchQueue::serialBlocking("com.tarnwell.JobWindow.reading");
    const Platform::DispatchQueue acting_ =
        Platform::DispatchQueue::serialBlocking("com.tarnwell.JobWindow.acting");
    // What arrives later looks whether the window is still there.
    const std::shared_ptr<JobWindow*> self_ = std::make_shared<JobWindow*>(this);
    JobWatch watch_;
    std::optional<JobReport> report_;
    std::shared_ptr<OffSwitch> usedSwitch_; // what `turnOn` takes back; its work is on `acting_`
    bool isActing_ = false;
    bool isReading_ = false;
    bool isReadDue_ = false; // another time, when this one has ended

    Gtk::Box content_{Gtk::Orientation::VERTICAL, 12};
    Gtk::Label name_;
    Gtk::Label state_;
    JobLines lines_;
    Gtk::Label message_;
    JobButtons buttons_;
};

} // namespace JobLink
