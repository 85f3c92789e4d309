#include "CorbelKitInterface/Linux/Toolkit.h"

#include "CorbelKit/Services/Appearance.h"
#include "CorbelKit/Services/ResourceBundle.h"
#include "Platform/Application.h"
#include "Platform/Bundle.h"
#include "Platform/MainThread.h"
#include "Platform/NeverDestroyed.h"
#include "Platform/Observation.h"

#include <gdkmm/display.h>
#include <glibmm/init.h>
#include <gtkmm/init.h>
#include <gtkmm/settings.h>
#include <gtkmm/widget.h>

#include <filesystem>
#include <system_error>

namespace CorbelKit {
namespace {

// Setting what is set already would have the whole style sheet read again.
void followAppearance() {
    auto prefersDark = Gtk::Settings::get_default()->property_gtk_application_prefer_dark_theme();
    const bool isNowDark = isDark(Platform::Application::effectiveAppearance());
    if (prefersDark.get_value() != isNowDark)
        prefersDark = isNowDark;
}

// Before anything is drawn: a symbol that is shown as its place is made known is not seen at first.
void addSymbols() {
    const auto symbols = requiredResource(resourceBundle(), "Symbols");
    if (!symbols)
        return;
    if (symbols->isFileURL()) {
        Toolkit::iconTheme()->add_search_path(symbols->path());
    } else {
        Toolkit::iconTheme()->add_resource_path(symbols->path() + "/hicolor");
    }
}

// By these the desktop knows whose windows they are, and what to call them.
void introduceProgram() {
    std::error_code ignored;
    const auto executable = std::filesystem::read_symlink("/proc/self/exe", ignored).filename();
    const auto identifier = Platform::Bundle::main().text("CFBundleIdentifier");
    const auto name = Platform::Bundle::main().text("CFBundleName");
    if (g_get_prgname() == nullptr)
        g_set_prgname(identifier.empty() ? executable.c_str() : identifier.c_str());
    if (!name.empty())
        g_set_application_name(name.c_str());
}

bool tryToStart(bool needsSymbols) {
    Toolkit::prepare();
    if (gtk_init_check() == FALSE)
        return false;
    Gtk::init_gtkmm_internals();
    const bool isRightToLeft = Platform::Application::userInterfaceLayoutDirection() ==
                               Platform::LayoutDirection::rightToLeft;
    Gtk::Widget::set_default_direction(isRightToLeft ? Gtk::TextDirection::RTL
                                                     : Gtk::TextDirection::LTR);
    if (needsSymbols)
        addSymbols();
    followAppearance();
    static const Platform::NeverDestroyed<Platform::Observation> appearance(
        Platform::Application::observeEffectiveAppearance(followAppearance));
    return true;
}

} // namespace

void Toolkit::prepare() {
    static const bool isPrepared = [] {
        introduceProgram();
        // Either would change how every thread of the process writes numbers.
        gtk_disable_setlocale();
        Glib::set_init_to_users_preferred_locale(false);
        return true;
    }();
    static_cast<void>(isPrepared);
}

bool Toolkit::startWithoutSymbols() {
    Platform::MainThread::check();
    static const bool isStarted = tryToStart(false);
    return isStarted;
}

bool Toolkit::start() {
    Platform::MainThread::check();
    static const bool isStarted = tryToStart(true);
    return isStarted;
}

Glib::RefPtr<Gtk::IconTheme> Toolkit::iconTheme() {
    return Gtk::IconTheme::get_for_display(Gdk::Display::get_default());
}

} // namespace CorbelKit
