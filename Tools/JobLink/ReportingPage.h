#pragma once

#include "Tools/JobLink/SettingListEditor.h"

#include <gtkmm/box.h>
#include <gtkmm/scrolledwindow.h>

#include <memory>

namespace JobLink {

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
