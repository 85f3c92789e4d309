#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>

namespace TestSupport {

class BusService;

/// A desktop portal (org.freedesktop.portal.Desktop) that has two settings, the colour scheme
/// and the font of fixed pitch.
class DesktopPortal {
public:
    explicit DesktopPortal(const std::string& busAddress, std::string monospaceFont = {});
    ~DesktopPortal();
    DesktopPortal(const DesktopPortal&) = delete;
    DesktopPortal& operator=(const DesktopPortal&) = delete;

    /// Any value, also one that has no meaning; its change is signalled.
    void setColorScheme(std::uint32_t scheme);

private:
    const std::string monospaceFont_;
    std::atomic<std::uint32_t> scheme_ = 0;
    std::unique_ptr<BusService> service_;
};

} // namespace TestSupport
