#include "Tools/JobLink/ReportingPage.h"

#include "CorbelKit/Services/Defaults.h"
#include "CorbelKit/Services/PrintableText.h"
#include "Tools/JobLink/Core/Texts.h"

#include <gtk/gtk.h>

#include <utility>

namespace JobLink {
namespace {

constexpr int margin = 24;
constexpr int gap = 8;

void setAccessibleName(Gtk::Widget& widget, const Glib::ustring& name) {
    gtk_accessible_update_property(GTK_ACCESSIBLE(widget.gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL,
                                   name.c_str(), -1);
}

} // namespace

SettingListEditor::SettingListEditor(std::string_view key, const Glib::ustring& title,
                                     const Glib::ustring& example)
    : Gtk::Box(Gtk::Orientation::VERTICAL, gap)
    , none_(localizedString("None"))
    , add_(localizedString("Add")) {
    auto& heading = *Gtk::make_managed<Gtk::Label>(title);
    heading.set_xalign(0);
    heading.set_wrap();
    heading.add_css_class("heading");
    append(heading);
    rows_.set_selection_mode(Gtk::SelectionMode::NONE);
    rows_.add_css_class("rich-list");
    rows_.add_css_class("frame");
    setAccessibleName(rows_, title);
    none_.add_css_class("dim-label");
    none_.set_margin(gap);
    rows_.set_placeholder(none_);
    append(rows_);

    auto& line = *Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, gap);
    entry_.set_placeholder_text(example);
    entry_.set_hexpand();
    setAccessibleName(entry_, title);
    entry_.signal_activate().connect([this] { addEntered(); });
    add_.signal_clicked().connect([this] { addEntered(); });
    line.append(entry_);
    line.append(add_);
    append(line);
    failure_.set_xalign(0);
    failure_.set_wrap();
    failure_.set_visible(false);
    failure_.add_css_class("error");
    append(failure_);

    list_ = SettingList::make(key, [weak = std::weak_ptr(self_)](const auto& texts) {
        if (const auto self = weak.lock())
            (*self)->show(texts);
    });
}

void SettingListEditor::show(const std::vector<std::string>& texts) {
    while (auto* const row = rows_.get_row_at_index(0))
        rows_.remove(*row);
    for (const auto& text : texts)
        addRow(text);
}

void SettingListEditor::addRow(const std::string& text) {
    const auto shown = CorbelKit::printableText(text);
    auto& line = *Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, gap);
    auto& label = *Gtk::make_managed<Gtk::Label>(shown);
    label.set_xalign(0);
    label.set_hexpand();
    label.set_ellipsize(Pango::EllipsizeMode::MIDDLE);
    line.append(label);
    auto& remove = *Gtk::make_managed<Gtk::Button>();
    remove.set_icon_name("list-remove-symbolic");
    remove.set_has_frame(false);
    remove.set_tooltip_text(localizedString("Remove %@", shown));
    setAccessibleName(remove, localizedString("Remove %@", shown));
    remove.signal_clicked().connect([this, text] { set(text, false); });
    line.append(remove);
    rows_.append(line);
    line.get_parent()->set_focusable(false); // of the row, what can be done is the button's
}

void SettingListEditor::addEntered() {
    if (const auto text = entry_.get_text().raw(); !text.empty())
        set(text, true);
}

void SettingListEditor::set(const std::string& text, bool isListed) {
    list_->set(text, isListed, [weak = std::weak_ptr(self_), isListed](const auto& failure) {
        const auto self = weak.lock();
        if (!self)
            return;
        auto& editor = **self;
        editor.failure_.set_visible(failure.has_value());
        if (failure) {
            editor.failure_.set_text(localizedString("The settings could not be written.") + ' ' +
                                     CorbelKit::printableText(failure->description));
        } else if (isListed) {
            editor.entry_.set_text("");
        }
        editor.entry_.grab_focus(); // the button may be gone
    });
}

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
