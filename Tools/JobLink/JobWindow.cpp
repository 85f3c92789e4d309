#include "Tools/JobLink/JobWindow.h"

#include "CorbelKit/Services/PrintableText.h"
#include "Platform/MainThread.h"
#include "Platform/UTF8.h"
#include "Tools/JobLink/Core/Exceptions.h"
#include "Tools/JobLink/Core/JobWording.h"
#include "Tools/JobLink/Core/Texts.h"
#include "Tools/JobLink/Core/TimedTool.h"
#include "Tools/JobLink/ShowInFiles.h"
#include "Tools/JobLink/WindowKeys.h"

#include <gdkmm/clipboard.h>
#include <gtkmm/tooltip.h>

#include <utility>
#include <vector>

namespace JobLink {
namespace {

using CorbelKit::printableText;
using Line = JobLines::Line;
using Side = JobButtons::Side;

const std::string leftToRightMark = "\xE2\x80\x8E"; // or else the time comes before the date

std::string joinedLines(const std::vector<std::string>& texts) {
    std::string joined;
    for (const auto& text : texts)
        joined.append(joined.empty() ? "" : "\n").append(text);
    return joined.empty() ? localizedString("Not known") : joined;
}

std::string startLines(const JobReport& report) {
    std::vector<std::string> texts;
    texts.reserve(report.description.starts.size());
    for (const auto& start : report.description.starts)
        texts.push_back(startText(start));
    return texts.empty() ? startsText(report.description) : joinedLines(texts);
}

/// The window is as high as what it says, and fits every screen: what a file says of itself may be
/// as long as it likes. All of it is where the pointer rests, and read out.
void cutAfterLines(Gtk::Label& label) {
    constexpr int mostLines = 4;
    label.set_halign(Gtk::Align::START);
    label.set_xalign(0);
    label.set_wrap();
    label.set_wrap_mode(Pango::WrapMode::WORD_CHAR);
    label.set_max_width_chars(60);
    label.set_lines(mostLines);
    label.set_ellipsize(Pango::EllipsizeMode::END);
    label.set_has_tooltip();
    const auto showAll = [&label](int, int, bool, const Glib::RefPtr<Gtk::Tooltip>& tooltip) {
        tooltip->set_text(label.get_text());
        return label.get_layout()->is_ellipsized();
    };
    label.signal_query_tooltip().connect(showAll, false);
}

Side sideOf(bool isAvailable, bool isBack) {
    if (!isAvailable)
        return Side::unavailable;
    return isBack ? Side::back : Side::forth;
}

} // namespace

JobWindow::JobWindow(JobPlace place)
    : place_(std::move(place))
    , watch_(place_.folder, [this] { read(); }) {
    layOut();
    connectButtons();
    read();
    findPackage();
}

void JobWindow::layOut() {
    constexpr int margin = 20;
    const auto name = printableText(place_.name);
    set_title(name);
    set_resizable(false);
    content_.set_margin(margin);
    name_.set_text(name);
    name_.add_css_class("title-2");
    state_.set_text(localizedString("Reading…"));
    for (auto* const label : {&name_, &state_, &message_})
        cutAfterLines(*label);
    message_.hide();
    lines_.set(Line::file, printableText(place_.path()));
    content_.append(name_);
    content_.append(state_);
    content_.append(lines_);
    content_.append(message_);
    content_.append(buttons_);
    set_child(content_);
    set_focus(buttons_.show());
    closeByEscape(*this);
}

void JobWindow::connectButtons() {
    buttons_.show().signal_clicked().connect([this] {
        showInFiles(place_, [weak = std::weak_ptr(self_)] {
            if (const auto self = weak.lock())
                (*self)->say(localizedString("No application here shows folders."));
        });
    });
    buttons_.copy().signal_clicked().connect([this] { copyPath(); });
    buttons_.ignore().signal_clicked().connect([this] { toggleException(); });
    buttons_.turnOff().signal_clicked().connect([this] { toggleOff(); });
}

void JobWindow::read() {
    isReadDue_ = std::exchange(isReading_, true);
    if (isReadDue_)
        return;
    reading_.async([place = place_, weak = std::weak_ptr(self_)] {
        Platform::MainThread::run([weak, report = readJobReport(place)]() mutable {
            if (const auto self = weak.lock())
                (*self)->display(std::move(report));
        });
    });
}

void JobWindow::display(JobReport report) {
    isReading_ = false;
    const auto state = stateText(place_, report);
    state_.set_text(state);
    state_.set_visible(!state.empty());
    if (const auto& file = report.file) {
        const auto& title = report.description.title;
        name_.set_text(
            title.empty() ? printableText(file->label.empty() ? place_.name : file->label) : title);
        lines_.set(Line::runs, joinedLines(report.description.runs));
        lines_.set(Line::starts, startLines(report));
        lines_.set(Line::owner, printableText(report.owner));
        lines_.set(Line::permissions, permissionsText(file->permissions));
        lines_.set(Line::changed, leftToRightMark + timeText(file->changed));
    }
    const bool isThere = report.file.has_value();
    buttons_.setIgnore(sideOf(isThere && report.file->isLabelKnown, report.isExcepted));
    const bool isSwitchable = isThere && report.offSwitch.kind() != OffSwitch::Kind::none;
    buttons_.setTurnOff(isSwitchable || usedSwitch_
                            ? sideOf(!report.isOff || usedSwitch_, usedSwitch_ != nullptr)
                            : Side::absent);
    report_ = std::move(report);
    if (std::exchange(isReadDue_, false))
        read();
}

void JobWindow::findPackage() {
    const auto queue = Platform::DispatchQueue::blocking("com.tarnwell.JobWindow.package");
    queue.async([path = place_.path(), weak = std::weak_ptr(self_)] {
        Platform::MainThread::run([weak, package = installedPackage(path)] {
            const auto self = weak.lock();
            if (!self)
                return;
            const auto none = localizedString("Installed by no package");
            const auto text = package ? printableText(*package) : localizedString("Not known");
            (*self)->lines_.set(Line::package, package && package->empty() ? none : text);
        });
    });
}

// One at a time. The buttons keep the keyboard meanwhile.
void JobWindow::act(std::function<Failure()> action, std::function<std::string()> done,
                    const std::string& failed) {
    if (std::exchange(isActing_, true))
        return;
    acting_.async(
        [action = std::move(action), done = std::move(done), failed, weak = std::weak_ptr(self_)] {
            Platform::MainThread::run([weak, failure = action(), done, failed] {
                const auto self = weak.lock();
                if (!self)
                    return;
                (*self)->isActing_ = false;
                (*self)->say(failure ? failed + ' ' + printableText(failure->description) : done());
                (*self)->read();
            });
        });
}

void JobWindow::toggleException() {
    if (!report_ || !report_->file)
        return;
    const auto& label = report_->file->label;
    const bool isExcepted = !report_->isExcepted;
    act([label, isExcepted] { return Exceptions::set(label, isExcepted); },
        [isExcepted] {
            return localizedString(isExcepted ? "You are not notified of this job any more."
                                              : "You are notified of this job again.");
        },
        localizedString("The settings could not be written."));
}

void JobWindow::toggleOff() {
    if (!report_)
        return;
    const bool isBack = usedSwitch_ != nullptr;
    const auto offSwitch = isBack ? usedSwitch_ : std::make_shared<OffSwitch>(report_->offSwitch);
    act([offSwitch, isBack] { return isBack ? offSwitch->turnOn() : offSwitch->turnOff(); },
        [this, offSwitch, isBack] { // called while the window is there
            usedSwitch_ = isBack ? nullptr : offSwitch;
            return localizedString(isBack ? "This job is turned on again."
                                          : "This job will not be started for you any more.");
        },
        localizedString(isBack ? "The job could not be turned on."
                               : "The job could not be turned off."));
}

// What is no text goes as a URL, which is.
void JobWindow::copyPath() {
    const auto path = place_.path();
    get_clipboard()->set_text(
        Platform::UTF8::isWellFormed(path) ? path : Platform::URL::file(path).absoluteString());
    say(localizedString("The path was copied."));
}

void JobWindow::say(const std::string& message) {
    message_.set_text(message);
    message_.show();
}

} // namespace JobLink
