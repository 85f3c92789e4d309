#include "Vesper_Pro_Agent/JobFileReader.h"

#include "CorbelKit/Services/Const.h"
#include "Platform/PropertyListLookup.h"

#include <utility>

namespace Vesper_Pro_Agent {
namespace {

Platform::PropertyListLookup labelLookup() {
    return Platform::PropertyListLookup(CorbelKit::Const::Key::label);
}

} // namespace

JobFileReader::JobFileReader(std::function<bool()> goesOn, std::uint64_t maximumRead)
    : goesOn_(std::move(goesOn))
    , maximumRead_(maximumRead)
    , buffer_(std::make_unique_for_overwrite<Buffer>()) {}

std::optional<MonitoredJob> JobFileReader::read(const Platform::URL& url,
                                                const MonitoredJob* known) {
    auto file = Platform::FileHandle::openForReading(url);
    if (!file || file->kind() != Platform::FileHandle::Kind::regular)
        return std::nullopt;
    const auto content = fillBuffer(*file);
    if (!content)
        return std::nullopt;
    if (content->size() < buffer_->size())
        return readSmallFile(*content, known);
    return readLargeFile(*content, *file);
}

std::optional<std::span<const std::byte>> JobFileReader::fillBuffer(Platform::FileHandle& file) {
    const std::span buffer(*buffer_);
    std::size_t filled = 0;
    while (filled < buffer.size()) {
        if (!goesOn_())
            return std::nullopt;
        const auto count = file.read(buffer.subspan(filled));
        if (!count)
            return std::nullopt;
        if (*count == 0)
            break;
        filled += *count;
    }
    return buffer.first(filled);
}

MonitoredJob JobFileReader::readSmallFile(std::span<const std::byte> content,
                                          const MonitoredJob* known) {
    digest_.update(content);
    const auto checksum = digest_.finalize();
    if (known != nullptr && known->checksum == checksum)
        return *known;
    auto lookup = labelLookup();
    lookup.append(content);
    return {.checksum = checksum, .label = lookup.finish()};
}

std::optional<MonitoredJob> JobFileReader::readLargeFile(std::span<const std::byte> beginning,
                                                         Platform::FileHandle& file) {
    auto lookup = labelLookup();
    bool mayHaveLabel = true;
    std::uint64_t total = 0;
    std::optional<std::span<const std::byte>> content = beginning;
    while (content && !content->empty() && total < maximumRead_) {
        total += content->size();
        digest_.update(*content);
        mayHaveLabel = mayHaveLabel && lookup.append(*content);
        content = fillBuffer(file);
    }
    if (content && !content->empty()) {
        const auto size = file.size();
        digest_.update(std::as_bytes(std::span(&size, 1)));
        mayHaveLabel = false;
    }
    const auto checksum = digest_.finalize(); // also where it is of no use: the next starts anew
    if (!content)
        return std::nullopt;
    return MonitoredJob{.checksum = checksum,
                        .label = mayHaveLabel ? lookup.finish() : std::nullopt};
}

} // namespace Vesper_Pro_Agent
