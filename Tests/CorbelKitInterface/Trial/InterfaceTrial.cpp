// An application with the kit's windows, for the tests to use as a user would. It does what the
// lines of the file (a FIFO) order that its one argument names, and says what came of it.
#include "CorbelKit/Services/HelperToolAlert.h"
#include "CorbelKitInterface/AllowBackgroundItem.h"
#include "Platform/Alert.h"
#include "Platform/Application.h"
#include "Platform/DispatchQueue.h"
#include "Platform/MainThread.h"

#include <gtkmm/button.h>
#include <gtkmm/label.h>
#include <gtkmm/stylecontext.h>
#include <gtkmm/window.h>

#include <algorithm>
#include <fstream>
#include <functional>
#include <iostream>
#include <map>
#include <thread>

namespace {

void say(const std::string& line) {
    std::cout << line + "\n" << std::flush;
}

Gtk::Widget* find(Gtk::Widget& widget, const std::string& identifier) {
    const char* const own = gtk_buildable_get_buildable_id(GTK_BUILDABLE(widget.gobj()));
    if (own != nullptr && own == identifier)
        return &widget;
    for (auto* child = widget.get_first_child(); child != nullptr;
         child = child->get_next_sibling()) {
        if (auto* const found = find(*child, identifier))
            return found;
    }
    return nullptr;
}

Gtk::Widget* find(const std::string& identifier) {
    for (auto* const window : Gtk::Window::list_toplevels()) {
        if (auto* const found = find(*window, identifier))
            return found;
    }
    return nullptr;
}

std::string textOf(const std::string& identifier) {
    auto* const widget = find(identifier);
    if (const auto* const label = dynamic_cast<Gtk::Label*>(widget))
        return label->get_text();
    const auto* const button = dynamic_cast<Gtk::Button*>(widget);
    return button != nullptr ? button->get_label() : "nothing";
}

/// How the window in front looks, by the colour of its background.
std::string background() {
    constexpr double half = 0.5;
    Gdk::RGBA color;
    for (auto* const window : Gtk::Window::list_toplevels())
        window->get_style_context()->lookup_color("theme_bg_color", color);
    return color.get_green() < half ? "dark" : "light";
}

bool isInFront() {
    return std::ranges::any_of(Gtk::Window::list_toplevels(), [](const Gtk::Window* window) {
        const bool isLaidOut = window->get_width() > 0;
        return isLaidOut && window->is_active();
    });
}

std::string windows() {
    const auto all = Gtk::Window::list_toplevels();
    const auto visible = std::ranges::count_if(all, &Gtk::Window::is_visible);
    return std::to_string(visible) + " of " + std::to_string(all.size());
}

/// The widget that the keyboard is at, and whether one sees that.
std::string focus() {
    for (const auto* const window : Gtk::Window::list_toplevels()) {
        const auto* const widget = window->is_visible() ? window->get_focus() : nullptr;
        if (widget == nullptr)
            continue;
        const auto flags = widget->get_state_flags() & Gtk::StateFlags::FOCUS_VISIBLE;
        return gtk_buildable_get_buildable_id(GTK_BUILDABLE(widget->gobj())) +
               std::string(flags == Gtk::StateFlags::FOCUS_VISIBLE ? ", drawn" : "");
    }
    return "nowhere";
}

Gtk::Widget* findClose(Gtk::Widget& widget) {
    if (widget.has_css_class("close"))
        return &widget;
    Gtk::Widget* found = nullptr;
    for (auto* child = widget.get_first_child(); child != nullptr && found == nullptr;
         child = child->get_next_sibling())
        found = findClose(*child);
    return found;
}

/// The side of the title bar that closes the window.
std::string closeSide() {
    for (auto* const window : Gtk::Window::list_toplevels()) {
        double left = 0;
        double top = 0;
        auto* const button = findClose(*window);
        if (button != nullptr && button->translate_coordinates(*window, 0, 0, left, top))
            return left < window->get_width() / 2.0 ? "left" : "right";
    }
    return "nowhere";
}

/// How many pixels of the picture's hindmost layer are above its place, where they are cut off.
std::string rise(const std::string& identifier) {
    auto* const layer = find(identifier)->get_first_child();
    GdkPaintable* const picture = gtk_widget_paintable_new(GTK_WIDGET(layer->gobj()));
    GtkSnapshot* const snapshot = gtk_snapshot_new();
    gdk_paintable_snapshot(picture, snapshot, layer->get_width(), layer->get_height());
    g_object_unref(picture);
    GskRenderNode* const drawn = gtk_snapshot_free_to_node(snapshot);
    if (drawn == nullptr)
        return "nothing";
    graphene_rect_t bounds;
    gsk_render_node_get_bounds(drawn, &bounds);
    gsk_render_node_unref(drawn);
    return std::to_string(static_cast<float>(layer->get_height()) - bounds.origin.y -
                          bounds.size.height);
}

/// Until it is dismissed.
void alert(const std::string& message) {
    Platform::runModal({.messageText = message,
                        .informativeText = "Information",
                        .buttonTitle = "Understood",
                        .style = Platform::Alert::Style::critical});
    say("dismissed " + message);
}

/// Each of which asks for an alert.
std::vector<std::thread>& otherThreads() {
    static std::vector<std::thread> threads;
    return threads;
}

void obey(const std::string& line) {
    const auto space = std::min(line.find(' '), line.size());
    const auto command = line.substr(0, space);
    const auto argument = line.substr(std::min(space + 1, line.size()));
    const std::map<std::string, std::function<void()>> actions = {
        {"show", [] { CorbelKit::AllowBackgroundItem::show(), say("shown"); }},
        {"click", [&] { find(argument)->activate(); }},
        {"text", [&] { say(textOf(argument)); }},
        {"background", [] { say(background()); }},
        {"windows", [] { say(windows()); }},
        {"focus", [] { say(focus()); }},
        {"rise", [&] { say(rise(argument)); }},
        {"close", [] { say(closeSide()); }},
        {"front", [] { say(isInFront() ? "yes" : "no"); }},
        {"alert", [&] { alert(argument); }},
        {"alertElsewhere", [&] { otherThreads().emplace_back(alert, argument); }},
        {"helper", [] { CorbelKit::showHelperToolAlert([] { say("dismissed"); }); }},
    };
    actions.at(command)();
}

class Delegate : public Platform::ApplicationDelegate {
public:
    explicit Delegate(std::string commands)
        : commands_(std::move(commands)) {}

    void applicationDidFinishLaunching() override {
        reading_.async([path = commands_] {
            std::ifstream file(path);
            for (std::string line; std::getline(file, line);) {
                Platform::MainThread::run([line] { obey(line); });
            }
        });
    }

    void applicationWillTerminate() override {
        alert("too late");
        for (auto& thread : otherThreads())
            thread.join();
    }

private:
    const std::string commands_;
    const Platform::DispatchQueue reading_ = Platform::DispatchQueue::serial("commands");
};

} // namespace

int main(int argumentCount, char** arguments) {
    return Platform::Application::run(
        argumentCount, arguments, [arguments] { return std::make_unique<Delegate>(arguments[1]); });
}
