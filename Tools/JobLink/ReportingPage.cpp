#include "Tools/JobLink/ReportingPage.h"

#include "CorbelKit/Services/Defaults.h"
#include "Tools/JobLink/Core/Texts.h"

namespace JobLink {
namespace {

constexpr int margin = 24;

} // namespace

ReportingPage::ReportingPage()
    : content_(Gtk::Orientation::VERTICAL, 2 * margin) {
    content_.set_margin(margin);
    set_child(content_);
    set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
}

void ReportingPage::on_map() {
    if (!exceptions_) {
        exceptions_ = std::make_unique<SettingListEditor>(
            CorbelKit::Defaults::exceptions,
            localizedString("Do not notify of the jobs with these labels or file names"),
            "com.example.backup");
        excludePrefixes_ = std::make_unique<SettingListEditor>(
            CorbelKit::Defaults::excludePrefixes,
            localizedString("Nor of jobs whose labels or file names begin with"), "com.example.");
        content_.append(*exceptions_);
        content_.append(*excludePrefixes_);
    }
    Gtk::ScrolledWindow::on_map();
}

} // namespace JobLink
