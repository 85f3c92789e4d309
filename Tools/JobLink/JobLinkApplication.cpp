#include "Tools/JobLink/JobLinkApplication.h"

#include "CorbelKit/Services/Const.h"
#include "CorbelKit/Services/PrintableText.h"
#include "CorbelKitInterface/Linux/Toolkit.h"
#include "Platform/MainThread.h"
#include "Tools/JobLink/Core/Texts.h"
#include "Vesper_Pro_Agent/JobFolders.h"

#include <glibmm/main.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <span>
#include <utility>

namespace JobLink {
namespace {

using Vesper_Pro_Agent::jobFolders;

constexpr std::size_t mostWindows = 12;
constexpr std::size_t mostLinks = 64; // that wait

/// Has the window destroyed when it is closed and its own signal is done with; `release` gives up
/// the owner. It comes before the toolkit's own answer, which would leave the owner a dead window.
template <class Release>
void destroyWhenClosed(Gtk::Window& window, const Release& release) {
    window.signal_close_request().connect(
        [&window, release] {
            window.set_visible(false);
            using Owner = decltype(release());
            Platform::MainThread::run([kept = std::make_shared<Owner>(release())] {});
            return true;
        },
        false);
}

} // namespace

// Links come as the bytes of the command line: as files, they would first be spelled anew.
JobLinkApplication::JobLinkApplication()
    : Gtk::Application(std::string(CorbelKit::Const::App::Identifier::vesperPro),
                       Gio::Application::Flags::HANDLES_COMMAND_LINE) {}

void JobLinkApplication::on_startup() {
    if (!CorbelKit::Toolkit::startWithoutSymbols()) {
        std::fputs("vesper-job-link: there is no display\n", stderr);
        std::exit(EXIT_FAILURE);
    }
    Gtk::Application::on_startup();
    set_accel_for_action("window.close", "<Control>w");
}

int JobLinkApplication::on_command_line(
    const Glib::RefPtr<Gio::ApplicationCommandLine>& commandLine) {
    int count = 0;
    char** const arguments = commandLine->get_arguments(count);
    const auto links = std::span(arguments, static_cast<std::size_t>(count)).subspan(1);
    if (links.empty())
        activate();
    for (const auto* const link : links)
        takeLink(link);
    g_strfreev(arguments);
    return EXIT_SUCCESS;
}

void JobLinkApplication::on_activate() {
    if (!list_) {
        list_ = std::make_unique<JobListWindow>([this](const auto& path) { showJob(path); });
        destroyWhenClosed(*list_, [this] { return std::exchange(list_, nullptr); });
        add_window(*list_);
    }
    list_->present();
}

// However fast they come, windows are drawn in between, and what comes twice is followed once.
void JobLinkApplication::takeLink(std::string link) {
    if (links_.size() >= mostLinks || std::ranges::count(links_, link) > 0)
        return;
    if (links_.empty()) {
        hold();
        Glib::signal_idle().connect_once([this] { followLinks(); }, Glib::PRIORITY_LOW);
    }
    links_.push_back(std::move(link));
}

void JobLinkApplication::followLinks() {
    const auto link = std::move(links_.front());
    links_.pop_front();
    followLink(link);
    if (links_.empty()) {
        release();
    } else {
        Glib::signal_idle().connect_once([this] { followLinks(); }, Glib::PRIORITY_LOW);
    }
}

void JobLinkApplication::followLink(const std::string& link) {
    if (const auto path = pathInLink(link)) {
        showJob(*path);
    } else {
        say(localizedString("This link names no job."), link);
    }
}

void JobLinkApplication::showJob(const std::string& path) {
    const auto place = jobPlace(path, jobFolders());
    if (!place) {
        say(localizedString("This file is in no watched folder and was not opened."), path);
        return;
    }
    auto found = jobWindows_.find(path);
    if (found == jobWindows_.end()) {
        if (jobWindows_.size() >= mostWindows) {
            say(localizedString("Too many windows are open. Close one and try again."), path);
            return;
        }
        found = jobWindows_.emplace(path, std::make_unique<JobWindow>(*place)).first;
        auto& window = *found->second;
        destroyWhenClosed(window, [this, path] { return jobWindows_.extract(path); });
        add_window(window);
    }
    found->second->present();
}

void JobLinkApplication::say(const std::string& message, const std::string& detail) {
    if (!message_) {
        message_ = std::make_unique<MessageWindow>();
        destroyWhenClosed(*message_, [this] { return std::exchange(message_, nullptr); });
        add_window(*message_);
    }
    message_->say(message, CorbelKit::printableText(detail));
    message_->present();
}

} // namespace JobLink
