#include "Tools/JobLink/ShowInFiles.h"

#include "Platform/Workspace.h"

#include <giomm/appinfo.h>
#include <giomm/application.h>
#include <giomm/asyncresult.h>
#include <giomm/dbusconnection.h>
#include <glibmm/error.h>
#include <glibmm/variant.h>

#include <utility>

namespace JobLink {
namespace {

void openFolder(const Platform::URL& folder, const std::function<void()>& failed) {
    if (Gio::AppInfo::get_default_for_type("inode/directory", true)) {
        Platform::Workspace::open(folder);
    } else {
        failed();
    }
}

} // namespace

// File Manager DBus Interface (org.freedesktop.FileManager1).
void showInFiles(const JobPlace& place, std::function<void()> failed) {
    const auto connection = Gio::Application::get_default()->get_dbus_connection();
    if (!connection) {
        openFolder(place.folder, failed);
        return;
    }
    const std::vector<Glib::ustring> items{Platform::URL::file(place.path()).absoluteString()};
    const auto arguments = Glib::VariantContainerBase::create_tuple(
        {Glib::Variant<std::vector<Glib::ustring>>::create(items),
         Glib::Variant<Glib::ustring>::create("")});
    const auto end = [connection, folder = place.folder,
                      failed = std::move(failed)](const Glib::RefPtr<Gio::AsyncResult>& result) {
        try {
            connection->call_finish(result);
        } catch (const Glib::Error&) {
            openFolder(folder, failed);
        }
    };
    constexpr int patience = 5000; // milliseconds
    connection->call("/org/freedesktop/FileManager1", "org.freedesktop.FileManager1", "ShowItems",
                     arguments, end, "org.freedesktop.FileManager1", patience);
}

} // namespace JobLink
