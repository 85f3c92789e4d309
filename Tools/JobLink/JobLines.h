#pragma once

#include <gtkmm/grid.h>
#include <gtkmm/label.h>
#include <gtkmm/scrolledwindow.h>

#include <array>
#include <cstdint>
#include <string>

namespace JobLink {

/// What there is to say of a job, a line each, with what it is about in front. Main thread.
class JobLines final : public Gtk::ScrolledWindow {
public:
    enum class Line : std::uint8_t { runs, starts, file, owner, permissions, changed, package };

    JobLines();

    /// The text is safe to show; an empty one takes the line away.
    void set(Line line, const std::string& text);

private:
    struct Row {
        Gtk::Label caption{};
        Gtk::Label text{};
    };

    void takeKeyboardIfNeeded();

    Gtk::Grid grid_;
    std::array<Row, 7> rows_;
};

} // namespace JobLink
