#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>

namespace TestSupport {

class BusService;

/// A desktop portal (org.freedesktop.portal.Desktop) that has one setting, the colour scheme.
class DesktopPortal {
public:
    explicit DesktopPortal(const std::string& busAddress);
    ~DesktopPortal();
    DesktopPortal(const DesktopPortal&) = delete;
    DesktopPortal& operator=(const DesktopPortal&) = delete;
    DesktopPortal(DesktopPortal&&) = delete;
    DesktopPortal& operator=(DesktopPortal&&) = delete;

    /// Any value, also one that has no meaning; its change is signalled.
    void setColorScheme(std::uint32_t scheme);

private:
    std::atomic<std::uint32_t> scheme_ = 0;
    std::unique_ptr<BusService> service_;
};

} // namespace TestSupport
