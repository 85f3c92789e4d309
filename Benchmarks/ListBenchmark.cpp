// The list of all jobs, with 10,000 of them, beside a window with one label on the same display.

#include "Benchmarks/Measurement.h"
#include "CorbelKitInterface/Linux/Toolkit.h"
#include "Tests/Support/Linux/DesktopSession.h"
#include "Tests/Support/TemporaryFolder.h"
#include "Tools/JobLink/JobListPage.h"

#include <gtk/gtk.h>
#include <gtkmm/window.h>

#include <algorithm>
#include <cstdlib>

namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr int jobCount = 10'000;

/// Milliseconds until the condition holds, while the main loop runs.
double timeUntil(Clock::time_point start, const std::function<bool()>& condition) {
    while (!condition())
        g_main_context_iteration(nullptr, TRUE);
    return Milliseconds(Clock::now() - start).count();
}

/// A window that counts what it has drawn.
class Shown {
public:
    explicit Shown(Gtk::Widget& content) {
        constexpr int width = 980;
        constexpr int height = 600;
        window_.set_default_size(width, height);
        window_.set_child(content);
        window_.present();
        g_signal_connect_swapped(gtk_widget_get_frame_clock(GTK_WIDGET(window_.gobj())),
                                 "after-paint", G_CALLBACK(+[](int* frames) { ++*frames; }),
                                 &frames_);
    }

    int frames() const { return frames_; }

    /// The milliseconds that each step took to be drawn, sorted.
    std::vector<double> timesOf(int steps, const std::function<void(int)>& step) {
        std::vector<double> times;
        for (int number = 0; number < steps; ++number) {
            const auto start = Clock::now();
            step(number);
            window_.queue_draw();
            times.push_back(timeUntil(start, [&, before = frames_] { return frames_ > before; }));
        }
        std::ranges::sort(times);
        return times;
    }

private:
    Gtk::Window window_;
    int frames_ = 0;
};

Gtk::ColumnView* findTable(Gtk::Widget& widget) {
    if (auto* const table = dynamic_cast<Gtk::ColumnView*>(&widget))
        return table;
    for (auto* child = widget.get_first_child(); child != nullptr;
         child = child->get_next_sibling()) {
        if (auto* const table = findTable(*child))
            return table;
    }
    return nullptr;
}

void fill(const TestSupport::TemporaryFolder& folder) {
    for (int number = 0; number < jobCount; ++number) {
        const auto text = std::to_string(number);
        std::string entry = "[Desktop Entry]\nType=Application\nName=Example ";
        entry.append(text).append("\nExec=/opt/example").append(text).append("/bin/program -b\n");
        TestSupport::writeFile(folder / ("org.example.program" + text + ".desktop"), entry);
    }
}

bool measure() {
    constexpr int steps = 200;
    const auto bareStart = Clock::now();
    Gtk::Label label("Nothing");
    double bareTime = 0;
    std::vector<double> bareSteps;
    {
        Shown bare(label);
        bareTime = timeUntil(bareStart, [&] { return bare.frames() > 0; });
        bareSteps =
            bare.timesOf(steps, [&](int number) { label.set_text(std::to_string(number)); });
    }
    const auto start = Clock::now();
    JobLink::JobListPage page([](const auto&) {});
    Shown shown(page);
    const auto first = timeUntil(start, [&] { return shown.frames() > 0; });
    auto* const table = findTable(page);
    const auto model = table->get_model();
    timeUntil(start,
              [&] { return g_list_model_get_n_items(G_LIST_MODEL(model->gobj())) == jobCount; });
    const auto all =
        timeUntil(start, [&, before = shown.frames()] { return shown.frames() > before; });
    const auto scroll = table->get_vadjustment();
    const auto scrolled = shown.timesOf(steps, [&](int number) {
        scroll->set_value((scroll->get_upper() - scroll->get_page_size()) * number / steps);
    });
    std::printf("A window with a label: drawn after %.0f ms; a step %.1f ms, at worst %.1f\n",
                bareTime, bareSteps[steps / 2], bareSteps.back());
    bool holds = Benchmarks::report("List of jobs: its window is drawn after", first, 300, "ms");
    holds &= Benchmarks::report("List of jobs: 10,000 are in it after", all, 500, "ms");
    holds &= Benchmarks::report("List of jobs: a step through it, of a label's",
                                scrolled[steps / 2] / bareSteps[steps / 2], 2);
    return Benchmarks::report("List of jobs: the slowest of 200 steps", scrolled.back(), 100,
                              "ms") &&
           holds;
}

} // namespace

int main() {
    const TestSupport::TemporaryFolder folder;
    const TestSupport::TemporaryFolder configuration;
    fill(folder);
    const TestSupport::DesktopSession session;
    for (const auto& [name, value] :
         {std::pair<const char*, std::string>("DISPLAY", session.display()),
          {"CORBEL_STARTUP_FOLDERS", folder.path().string()},
          {"CORBEL_LOCAL_LIBRARY", (folder / "missing").string()},
          {"XDG_CONFIG_HOME", configuration.path().string()},
          {"GSK_RENDERER", "cairo"},
          {"GDK_DEBUG", "gl-disable"},
          {"GTK_A11Y", "none"}})
        setenv(name, value.c_str(), 1);
    CorbelKit::Toolkit::prepare();
    return CorbelKit::Toolkit::start() && measure() ? EXIT_SUCCESS : EXIT_FAILURE;
}
