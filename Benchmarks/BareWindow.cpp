#include <gtkmm/application.h>
#include <gtkmm/applicationwindow.h>

#include <memory>

/// A window with nothing in it: what the toolkit alone takes until one is there.
int main(int count, char** arguments) {
    const auto application = Gtk::Application::create("com.example.BareWindow");
    std::unique_ptr<Gtk::ApplicationWindow> window;
    application->signal_activate().connect([&] {
        window = std::make_unique<Gtk::ApplicationWindow>();
        application->add_window(*window);
        window->present();
    });
    return application->run(count, arguments);
}
