#pragma once

#include "Tools/JobLink/Core/SettingList.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/entry.h>
#include <gtkmm/label.h>
#include <gtkmm/listbox.h>
#include <gtkmm/scrolledwindow.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace JobLink {

/// A list of texts in the settings that the user can add to and remove from. Main thread.
class SettingListEditor final : public Gtk::Box {
public:
    /// Of the list under the key; `example` is what an entry looks like.
    SettingListEditor(std::string_view key, const Glib::ustring& title,
                      const Glib::ustring& example);

private:
    void show(const std::vector<std::string>& texts);
    void addRow(const std::string& text);
    void set(const std::string& text, bool isListed);
    void addEntered();

    Gtk::ListBox rows_;
    Gtk::Label none_;
    Gtk::Entry entry_;
    Gtk::Button add_;
    Gtk::Label failure_;
    // What arrives later looks whether the editor is still there.
    const std::shared_ptr<SettingListEditor*> self_ = std::make_shared<SettingListEditor*>(this);
    std::shared_ptr<SettingList> list_;
};

/// What the agent is silent about, made when it is first seen. Main thread.
class ReportingPage final : public Gtk::ScrolledWindow {
public:
    ReportingPage();

private:
    void on_map() override;

    Gtk::Box content_;
    std::unique_ptr<SettingListEditor> exceptions_;
    std::unique_ptr<SettingListEditor> excludePrefixes_;
};

} // namespace JobLink
