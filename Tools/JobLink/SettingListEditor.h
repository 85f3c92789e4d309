#pragma once

#include "Tools/JobLink/Core/SettingList.h"
#include "Tools/JobLink/SettingRows.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/entry.h>
#include <gtkmm/label.h>

#include <memory>
#include <string>
#include <string_view>

namespace JobLink {

/// A list of texts in the settings that the user can add to and remove from. Main thread.
class SettingListEditor final : public Gtk::Box {
public:
    /// Of the list under the key; `example` is what an entry looks like.
    SettingListEditor(std::string_view key, const Glib::ustring& title,
                      const Glib::ustring& example);

private:
    void set(const std::string& text, bool isListed);
    void addEntered();

    SettingRows rows_;
    Gtk::Label none_;
    Gtk::Entry entry_;
    Gtk::Button add_;
    Gtk::Label failure_;
    // What arrives later looks whether the editor is still there.
    const std::shared_ptr<SettingListEditor*> self_ = std::make_shared<SettingListEditor*>(this);
    std::shared_ptr<SettingList> list_;
};

} // namespace JobLink
