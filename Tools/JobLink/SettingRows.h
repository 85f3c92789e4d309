#pragma once

#include <gtkmm/listbox.h>

#include <cstddef>
#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

namespace JobLink {

/// The texts of a list of settings, each with a button that removes it. Main thread.
///
/// A change makes and removes only the rows that differ, and where there are many, some at a time:
/// the window is drawn in between.
class SettingRows final : public Gtk::ListBox {
public:
    /// `remove` is called for the text whose button is used, `focusGone` when the row that had the
    /// keyboard is no longer there.
    SettingRows(std::function<void(const std::string& text)> remove,
                std::function<void()> focusGone);

    /// In their order. The same text may be among them more than once.
    void show(std::vector<std::string> texts);

private:
    bool advance();
    void advanceOne();
    void insertRow(const std::string& text);
    void removeRow();

    const std::function<void(const std::string& text)> remove_;
    const std::function<void()> focusGone_;
    std::vector<std::string> shown_;                    // as the rows are
    std::vector<std::string> wanted_;                   // as they become
    std::size_t next_ = 0;                              // before it, both are the same
    std::unordered_map<std::string, std::size_t> left_; // how often each is wanted from there on
    sigc::connection advancing_;
};

} // namespace JobLink
