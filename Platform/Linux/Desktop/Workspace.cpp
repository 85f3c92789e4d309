#include "Platform/Workspace.h"

#include "Platform/Linux/Desktop/ActivationToken.h"
#include "Platform/Linux/Desktop/DesktopEntries.h"
#include "Platform/Linux/Desktop/FrontWindow.h"
#include "Platform/Linux/Desktop/SettingsEntries.h"
#include "Platform/Linux/Loops/MainContext.h"
#include "Platform/Log.h"
#include "Platform/POSIX/FileSystemPath.h"

#include <gio/gdesktopappinfo.h>
#include <gio/gio.h>

#include <memory>
#include <utility>

namespace Platform::Workspace {
namespace {

template <class T>
struct ObjectUnref {
    void operator()(T* object) const { g_object_unref(object); }
};

template <class T>
using Object = std::unique_ptr<T, ObjectUnref<T>>;

constexpr auto tokenKey = "activation-token";

// GIO asks for the token where an entry with StartupNotify is activated over D-Bus.
char* tokenOfContext(GAppLaunchContext* context, GAppInfo* /*application*/, GList* /*files*/) {
    return g_strdup(static_cast<const char*>(g_object_get_data(G_OBJECT(context), tokenKey)));
}

GType launchContextType() {
    static const GType type = g_type_register_static_simple(
        G_TYPE_APP_LAUNCH_CONTEXT, "CorbelLaunchContext", sizeof(GAppLaunchContextClass),
        [](gpointer contextClass, gpointer /*data*/) {
            static_cast<GAppLaunchContextClass*>(contextClass)->get_startup_notify_id =
                tokenOfContext;
        },
        sizeof(GAppLaunchContext), nullptr, G_TYPE_FLAG_NONE);
    return type;
}

Object<GAppLaunchContext> makeLaunchContext(const std::string& token) {
    Object<GAppLaunchContext> context(
        G_APP_LAUNCH_CONTEXT(g_object_new(launchContextType(), nullptr)));
    // What is started must not report to the service manager in our name.
    g_app_launch_context_unsetenv(context.get(), "NOTIFY_SOCKET");
    if (!token.empty()) {
        g_object_set_data_full(G_OBJECT(context.get()), tokenKey, g_strdup(token.c_str()), g_free);
        g_app_launch_context_setenv(context.get(), "XDG_ACTIVATION_TOKEN", token.c_str());
        g_app_launch_context_setenv(context.get(), "DESKTOP_STARTUP_ID", token.c_str());
    }
    return context;
}

/// Something on its way to being opened. Main thread.
struct Opening {
    URL url;
    std::string token;
    Object<GDBusConnection> session; ///< null without a session bus
};

std::unique_ptr<Opening> taken(gpointer opening) {
    return std::unique_ptr<Opening>(static_cast<Opening*>(opening));
}

// The end of either launch.
template <auto finishLaunch>
void end(GObject* source, GAsyncResult* result, gpointer data) {
    const auto opening = taken(data);
    GError* failure = nullptr;
    if (finishLaunch(source, result, &failure))
        return;
    log("Cannot open " + opening->url.absoluteString() + ": " + failure->message);
    g_error_free(failure);
}

gboolean finishApplication(GObject* entry, GAsyncResult* result, GError** failure) {
    return g_app_info_launch_uris_finish(G_APP_INFO(entry), result, failure);
}

gboolean finishDefault(GObject* /*none*/, GAsyncResult* result, GError** failure) {
    return g_app_info_launch_default_for_uri_finish(result, failure);
}

std::optional<std::string> pathOfApplication(const URL& url) {
    auto path = fileSystemPath(url);
    return path && DesktopEntries::isInstalled(*path) ? path : std::nullopt;
}

// Both launches activate over D-Bus where the entry asks for it, and else start a process that is
// collected when it ends, with none of our descriptors but the standard streams.
void launch(std::unique_ptr<Opening> opening) {
    const auto context = makeLaunchContext(opening->token);
    if (const auto path = pathOfApplication(opening->url)) {
        const Object<GDesktopAppInfo> entry(g_desktop_app_info_new_from_filename(path->c_str()));
        if (entry) {
            g_app_info_launch_uris_async(G_APP_INFO(entry.get()), nullptr, context.get(), nullptr,
                                         end<finishApplication>, opening.release());
        }
        return;
    }
    const auto& text = opening->url.absoluteString();
    g_app_info_launch_default_for_uri_async(text.c_str(), context.get(), nullptr,
                                            end<finishDefault>, opening.release());
}

// GIO would connect to the session bus by itself, and have the process end with the bus.
void connectAndLaunch(std::unique_ptr<Opening> opening) {
    g_bus_get(
        G_BUS_TYPE_SESSION, nullptr,
        [](GObject*, GAsyncResult* result, gpointer data) {
            auto connected = taken(data);
            connected->session.reset(g_bus_get_finish(result, nullptr));
            if (connected->session)
                g_dbus_connection_set_exit_on_close(connected->session.get(), FALSE);
            launch(std::move(connected));
        },
        opening.release());
}

} // namespace

void findMenuBarOwningApplication(std::function<void(std::optional<std::string> name)> completion) {
    findFrontApplication(std::move(completion));
}

void open(const URL& url) {
    MainContext::invoke([url, token = takeActivationToken()] {
        connectAndLaunch(
            std::make_unique<Opening>(Opening{.url = url, .token = token, .session = nullptr}));
    });
}

std::optional<URL> urlForApplication(std::string_view bundleIdentifier) {
    // The one identifier that stands for a part of the system, whose name differs by desktop.
    constexpr std::string_view settings = "com.apple.systempreferences";
    const auto path = bundleIdentifier == settings
                          ? SettingsEntries::application()
                          : DesktopEntries::pathForIdentifier(bundleIdentifier);
    return path ? std::optional(URL::file(*path)) : std::nullopt;
}

} // namespace Platform::Workspace
