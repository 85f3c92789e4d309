#include "Tools/JobLink/JobWindow.h"

#include "CorbelKit/Formats/Octal.h"
#include "CorbelKit/Services/PrintableText.h"
#include "Platform/MainThread.h"
#include "Tools/JobLink/Core/Texts.h"
#include "Tools/JobLink/WindowKeys.h"

#include <utility>

namespace JobLink {
namespace {

using CorbelKit::printableText;

} // namespace

JobWindow::JobWindow(JobPlace place)
    : place_(std::move(place)) {
    constexpr int width = 560;
    constexpr int margin = 20;
    set_title(printableText(place_.name));
    set_default_size(width, -1);
    content_.set_margin(margin);
    name_.set_text(printableText(place_.name));
    name_.set_xalign(0);
    name_.add_css_class("title-2");
    content_.append(name_);
    content_.append(state_);
    lines_.set_column_spacing(margin);
    lines_.set_row_spacing(margin / 3);
    content_.append(lines_);
    set_child(content_);
    closeByEscape(*this);
    read();
}

void JobWindow::read() {
    reading_.async([place = place_, weak = std::weak_ptr(self_)] {
        Platform::MainThread::run([weak, file = readJobFile(place)] {
            if (const auto self = weak.lock())
                (*self)->display(file);
        });
    });
}

void JobWindow::display(const std::optional<JobFile>& file) {
    if (!file) {
        state_.set_text(localizedString("This file is no longer there."));
        return;
    }
    addLine(localizedString("File"), printableText(place_.path()));
    addLine(localizedString("Owner"), printableText(file->owner));
    addLine(localizedString("Permissions"),
            CorbelKit::Octal::symbolic(CorbelKit::Octal::string(file->permissions),
                                       CorbelKit::Octal::Mode::permission));
}

void JobWindow::addLine(const std::string& caption, const std::string& text) {
    auto& captionLabel = *Gtk::make_managed<Gtk::Label>(caption);
    captionLabel.set_xalign(1);
    captionLabel.set_valign(Gtk::Align::START);
    captionLabel.add_css_class("dim-label");
    auto& textLabel = *Gtk::make_managed<Gtk::Label>(text);
    textLabel.set_xalign(0);
    textLabel.set_hexpand();
    textLabel.set_wrap();
    textLabel.set_wrap_mode(Pango::WrapMode::WORD_CHAR);
    lines_.attach(captionLabel, 0, lineCount_);
    lines_.attach(textLabel, 1, lineCount_);
    ++lineCount_;
}

} // namespace JobLink
