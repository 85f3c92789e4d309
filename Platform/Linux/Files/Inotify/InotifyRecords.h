#pragma once

#include <sys/inotify.h>

#include <cstddef>
#include <cstring>
#include <span>
#include <string_view>

namespace Platform {

/// Calls visit(record, name) for each record of what one read of an inotify descriptor gave; the
/// name is empty where the watched item itself is meant.
template <class Visitor>
void forEachInotifyRecord(std::span<const char> bytes, const Visitor& visit) {
    while (bytes.size() >= sizeof(inotify_event)) {
        inotify_event record{};
        std::memcpy(&record, bytes.data(), sizeof record);
        const std::string_view padded(bytes.data() + sizeof record, record.len);
        visit(record, padded.substr(0, padded.find('\0')));
        bytes = bytes.subspan(sizeof record + record.len);
    }
}

} // namespace Platform
