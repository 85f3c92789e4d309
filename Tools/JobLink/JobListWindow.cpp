#include "Tools/JobLink/JobListWindow.h"

#include "Tools/JobLink/WindowKeys.h"

#include <glibmm/miscutils.h>

#include <utility>

namespace JobLink {

JobListWindow::JobListWindow(std::function<void(const std::string& path)> showJob)
    : showJob_(std::move(showJob)) {
    constexpr int width = 860;
    constexpr int height = 560;
    set_title(Glib::get_application_name());
    set_default_size(width, height);
    closeByEscape(*this);
}

} // namespace JobLink
