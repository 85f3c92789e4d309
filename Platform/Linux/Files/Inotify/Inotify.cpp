#include "Platform/Linux/Files/Inotify/Inotify.h"

#include "Platform/FileHandle.h"

#include <unistd.h>

#include <cstddef>
#include <cstring>
#include <string>
#include <utility>

namespace Platform {

std::optional<InotifyRecord> InotifyRecords::next() {
    if (bytes_.size() < sizeof(inotify_event))
        return std::nullopt;
    inotify_event event{};
    std::memcpy(&event, bytes_.data(), sizeof event);
    const std::string_view padded(bytes_.data() + sizeof event, event.len);
    bytes_ = bytes_.subspan(sizeof event + event.len);
    return InotifyRecord{
        .watch = event.wd, .events = event.mask, .name = padded.substr(0, padded.find('\0'))};
}

std::optional<Inotify> Inotify::make(const asio::any_io_executor& executor) {
    FileHandle descriptor(inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
    Inotify inotify(executor, descriptor.fileDescriptor());
    if (!inotify.isOpen())
        return std::nullopt;
    descriptor.release();
    return inotify;
}

Inotify::Inotify(const asio::any_io_executor& executor, int fileDescriptor)
    : descriptor_(executor) {
    asio::error_code failure;
    descriptor_.assign(fileDescriptor, failure);
}

int Inotify::add(const char* path, std::uint32_t events) {
    return inotify_add_watch(descriptor_.native_handle(), path, events);
}

int Inotify::add(int openItem, std::uint32_t events) {
    return add(("/proc/self/fd/" + std::to_string(openItem)).c_str(), events);
}

void Inotify::remove(int watch) {
    inotify_rm_watch(descriptor_.native_handle(), watch); // fails where the item went first
}

void Inotify::waitForRecords(std::function<void()> handler) {
    descriptor_.async_wait(asio::posix::stream_descriptor::wait_read,
                           [handler = std::move(handler)](asio::error_code failure) {
                               if (!failure)
                                   handler();
                           });
}

InotifyRecords Inotify::read(std::span<char> buffer) {
    // NOLINTNEXTLINE(clang-analyzer-unix.BlockInCriticalSection): the descriptor does not block
    const auto count = ::read(descriptor_.native_handle(), buffer.data(), buffer.size());
    return InotifyRecords(buffer.first(count > 0 ? static_cast<std::size_t>(count) : 0));
}

int Inotify::release() {
    return isOpen() ? descriptor_.release() : -1;
}

} // namespace Platform
