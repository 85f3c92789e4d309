#include "Platform/Linux/Files/FileSystemEvents/MountTable.h"

#include "Platform/FileHandle.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>
#include <utility>

namespace Platform {
namespace {

constexpr int fieldsBeforePoint = 4; // mount, parent, device, root

std::size_t endOfPoint(std::string_view line) {
    std::size_t end = 0;
    for (int field = 0; field <= fieldsBeforePoint && end != line.npos; ++field)
        end = line.find(' ', end + 1);
    return std::min(end, line.size());
}

/// The last field. Blanks and the like are written as three octal digits.
std::string pathOf(std::string_view mount) {
    mount.remove_prefix(mount.rfind(' ') + 1);
    std::string path;
    while (!mount.empty()) {
        std::size_t length = 1;
        char next = mount.front();
        if (next == '\\' && mount.size() >= 4) {
            length = 4;
            next = static_cast<char>((mount[1] - '0') * 64 + (mount[2] - '0') * 8 + mount[3] - '0');
        }
        path += next;
        mount.remove_prefix(length);
    }
    return path;
}

} // namespace

MountTable::MountTable(const asio::any_io_executor& executor)
    : descriptor_(executor) {
    FileHandle table(open("/proc/self/mountinfo", O_RDONLY | O_CLOEXEC));
    asio::error_code failure;
    descriptor_.assign(table.fileDescriptor(), failure);
    if (!failure)
        table.release();
    mounts_ = read();
}

void MountTable::waitForChange(std::function<void()> handler) {
    descriptor_.async_wait(asio::posix::stream_descriptor::wait_error,
                           [handler = std::move(handler)](asio::error_code failure) {
                               if (!failure)
                                   handler();
                           });
}

std::set<std::string> MountTable::changes() {
    const auto former = std::exchange(mounts_, read());
    std::set<std::string> changed;
    std::ranges::set_symmetric_difference(former, mounts_, std::inserter(changed, changed.end()));
    std::set<std::string> paths;
    for (const auto& mount : changed)
        paths.insert(pathOf(mount));
    return paths;
}

std::set<std::string> MountTable::read() {
    std::string text;
    std::array<char, 4096> buffer;
    const int table = descriptor_.native_handle();
    lseek(table, 0, SEEK_SET);
    for (auto count = ::read(table, buffer.data(), buffer.size()); count > 0;
         count = ::read(table, buffer.data(), buffer.size()))
        text.append(buffer.data(), static_cast<std::size_t>(count));
    std::set<std::string> mounts;
    for (std::string_view rest = text; !rest.empty();) {
        const auto line = rest.substr(0, rest.find('\n'));
        mounts.emplace(line.substr(0, endOfPoint(line)));
        rest.remove_prefix(std::min(line.size() + 1, rest.size()));
    }
    return mounts;
}

} // namespace Platform
