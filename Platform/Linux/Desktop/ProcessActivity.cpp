#include "Platform/ProcessActivity.h"

#include "Platform/Bundle.h"
#include "Platform/Linux/Bus/SystemBus.h"

#include <string>
#include <utility>

namespace Platform {
namespace {

using Options = ProcessActivity::Options;

constexpr auto patience = std::chrono::milliseconds(250);

bool contains(Options options, Options option) {
    const auto bits = static_cast<std::uint64_t>(option);
    return (static_cast<std::uint64_t>(options) & bits) == bits;
}

/// In the words of logind, joined by colons.
std::string inhibited(Options options) {
    std::string what;
    if (contains(options, Options::idleSystemSleepDisabled))
        what = "idle";
    if (contains(options, Options::suddenTerminationDisabled))
        what += what.empty() ? "shutdown" : ":shutdown";
    return what;
}

/// org.freedesktop.login1(5): what is inhibited stays so until the file is closed.
std::optional<FileHandle> inhibit(const std::string& what, std::string_view why) {
    const GStringPtr reason(g_utf8_make_valid(why.data(), static_cast<gssize>(why.size())));
    const auto arguments = takeVariant(g_variant_new("(ssss)", what.c_str(),
                                                     Bundle::main().text("CFBundleName").c_str(),
                                                     reason.get(), "block"));
    return SystemBus::shared().openFile({.destination = "org.freedesktop.login1",
                                         .path = "/org/freedesktop/login1",
                                         .interface = "org.freedesktop.login1.Manager",
                                         .name = "Inhibit",
                                         .replyType = "(h)"},
                                        arguments, patience);
}

} // namespace

class ProcessActivity::Impl {
public:
    explicit Impl(FileHandle inhibitor)
        : inhibitor_(std::move(inhibitor)) {}

private:
    FileHandle inhibitor_;
};

ProcessActivity ProcessActivity::begin(Options options, std::string_view reason) {
    const auto what = inhibited(options);
    auto inhibitor = what.empty() ? std::nullopt : inhibit(what, reason);
    return ProcessActivity(inhibitor ? std::make_unique<Impl>(std::move(*inhibitor)) : nullptr);
}

ProcessActivity::ProcessActivity(std::unique_ptr<Impl> impl)
    : impl_(std::move(impl)) {}

ProcessActivity::ProcessActivity(ProcessActivity&& other) noexcept = default;
ProcessActivity& ProcessActivity::operator=(ProcessActivity&& other) noexcept = default;
ProcessActivity::~ProcessActivity() = default;

void ProcessActivity::end() {
    impl_.reset();
}

} // namespace Platform
