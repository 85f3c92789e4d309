#include "Tools/JobLink/SettingListEditor.h"

#include "CorbelKit/Services/PrintableText.h"
#include "Tools/JobLink/Core/Texts.h"

#include <gtk/gtk.h>

namespace JobLink {
namespace {

constexpr int gap = 8;

void setAccessibleName(Gtk::Widget& widget, const Glib::ustring& name) {
    gtk_accessible_update_property(GTK_ACCESSIBLE(widget.gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL,
                                   name.c_str(), -1);
}

} // namespace

SettingListEditor::SettingListEditor(std::string_view key, const Glib::ustring& title,
                                     const Glib::ustring& example)
    : Gtk::Box(Gtk::Orientation::VERTICAL, gap)
    , rows_([this](const std::string& text) { set(text, false); }, [this] { entry_.grab_focus(); })
    , none_(localizedString("None"))
    , add_(localizedString("Add")) {
    auto& heading = *Gtk::make_managed<Gtk::Label>(title);
    heading.set_xalign(0);
    heading.set_wrap();
    heading.add_css_class("heading");
    append(heading);
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
            (*self)->rows_.show(texts);
    });
}

// What is typed while this one is being written is the next one.
void SettingListEditor::addEntered() {
    const auto text = entry_.get_text().raw();
    entry_.set_text("");
    entry_.grab_focus();
    if (!text.empty())
        set(text, true);
}

void SettingListEditor::set(const std::string& text, bool isListed) {
    list_->set(text, isListed, [weak = std::weak_ptr(self_), text, isListed](const auto& failure) {
        const auto self = weak.lock();
        if (!self)
            return;
        auto& editor = **self;
        editor.failure_.set_visible(failure.has_value());
        if (!failure)
            return;
        editor.failure_.set_text(localizedString("The settings could not be written.") + ' ' +
                                 CorbelKit::printableText(failure->description));
        if (isListed && editor.entry_.get_text().empty()) {
            editor.entry_.set_text(text);
            editor.entry_.set_position(-1);
        }
    });
}

} // namespace JobLink
