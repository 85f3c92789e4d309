#include "CorbelKitInterface/Storyboard.h"

#include "CorbelKit/Services/ResourceBundle.h"
#include "CorbelKitInterface/Linux/NativeView.h"
#include "CorbelKitInterface/Linux/Toolkit.h"
#include "CorbelKitInterface/Linux/WindowButtons.h"

#include <giomm/simpleactiongroup.h>
#include <glibmm/miscutils.h>
#include <gtkmm/button.h>
#include <gtkmm/cssprovider.h>
#include <gtkmm/frame.h>
#include <gtkmm/label.h>
#include <gtkmm/overlay.h>
#include <gtkmm/stylecontext.h>
#include <gtkmm/window.h>

namespace CorbelKit {
namespace {

using Layout = Glib::RefPtr<Gtk::Builder>;

template <class Object>
Object* objectIn(const Layout& layout, std::string_view name) {
    const auto object = layout->get_object(std::string(name));
    return dynamic_cast<Object*>(object.get());
}

Gtk::Widget* widgetIn(const Layout& layout, ViewKind kind, std::string_view name) {
    switch (kind) {
    case ViewKind::textField:
        return objectIn<Gtk::Label>(layout, name);
    case ViewKind::button:
        return objectIn<Gtk::Button>(layout, name);
    case ViewKind::imageView:
        return objectIn<Gtk::Overlay>(layout, name);
    case ViewKind::box:
        return objectIn<Gtk::Frame>(layout, name);
    }
    return nullptr;
}

// GTK keeps a window that nobody has destroyed.
void destroyWindows(const Layout& layout) {
    for (const auto& object : layout->get_objects()) {
        if (auto* const window = dynamic_cast<Gtk::Window*>(object.get()))
            gtk_window_destroy(window->gobj());
    }
}

Layout read(const Platform::URL& file) {
    auto layout = Gtk::Builder::create();
    try {
        file.isFileURL() ? layout->add_from_file(file.path())
                         : layout->add_from_resource(file.path());
    } catch (const Glib::Error&) {
        destroyWindows(layout); // those before the mistake
        return {};
    }
    return layout;
}

// Beside the layout may stand how its widgets look.
void applyStyle(const Platform::URL& file) {
    const auto provider = Gtk::CssProvider::create();
    file.isFileURL() ? provider->load_from_path(file.path())
                     : provider->load_from_resource(file.path());
    Gtk::StyleContext::add_provider_for_display(Gdk::Display::get_default(), provider,
                                                GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
}

} // namespace

/// The window of a layout; the actions of its buttons are those of the group "controller".
class WindowScene::Impl {
public:
    Impl(Layout layout, Gtk::Window& window)
        : layout_(std::move(layout))
        , window_(window) {
        window_.set_hide_on_close(true);
        window_.insert_action_group("controller", actions_);
        window_.signal_show().connect([this] { dressWindowButtons(window_); }, false);
        if (window_.get_title().empty()) // which lists of windows show, and screen readers say
            window_.set_title(Glib::get_application_name());
        window_.property_is_active().signal_changed().connect([this] { activeChanged(); });
    }

    ~Impl() { destroyWindows(layout_); }

    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;
    Impl(Impl&&) = delete;
    Impl& operator=(Impl&&) = delete;

    const Layout& layout() const { return layout_; }

    Gtk::Window& window() { return window_; }

    void setDelegate(std::weak_ptr<WindowDelegate> delegate) { delegate_ = std::move(delegate); }

    void setAction(const std::string& name, const std::function<void()>& task) {
        actions_->remove_action(name);
        actions_->add_action(name, task);
    }

private:
    void activeChanged() {
        const auto delegate = delegate_.lock();
        if (delegate && !window_.is_active())
            delegate->windowDidResignKey();
    }

    const Layout layout_;
    Gtk::Window& window_; // of the layout
    const Glib::RefPtr<Gio::SimpleActionGroup> actions_ = Gio::SimpleActionGroup::create();
    std::weak_ptr<WindowDelegate> delegate_;
};

void WindowScene::setDelegate(std::weak_ptr<WindowDelegate> delegate) {
    impl_->setDelegate(std::move(delegate));
}

void WindowScene::showWindow() {
    impl_->window().present();
}

void WindowScene::close() {
    impl_->window().close();
}

std::shared_ptr<const NativeView> WindowScene::nativeOutlet(ViewKind kind,
                                                            std::string_view name) const {
    auto* const widget = widgetIn(impl_->layout(), kind, name);
    if (widget == nullptr)
        return nullptr;
    return std::make_shared<NativeView>(NativeView{.layout = impl_->layout(), .widget = *widget});
}

void WindowScene::setAction(std::string_view selector, const std::function<void()>& task) {
    impl_->setAction(std::string(selector.substr(0, selector.find(':'))), task);
}

std::optional<WindowScene> Storyboard::instantiateInitialController(const std::string& name,
                                                                    const Platform::Bundle& bundle,
                                                                    const std::string& className) {
    const auto file = requiredResource(bundle, name + ".ui");
    if (!file || !Toolkit::start())
        return std::nullopt;
    auto layout = read(*file);
    if (!layout)
        return std::nullopt;
    auto* const window = objectIn<Gtk::Window>(layout, className);
    if (window == nullptr) {
        destroyWindows(layout);
        return std::nullopt;
    }
    if (const auto style = requiredResource(bundle, name + ".css"))
        applyStyle(*style);
    return WindowScene(std::make_shared<WindowScene::Impl>(std::move(layout), *window));
}

} // namespace CorbelKit
