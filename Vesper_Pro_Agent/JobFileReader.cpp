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

std::optional<MonitoredJob> JobFileReader::read(Platform::Expected<Platform::FileHandle> file,
                                                std::optional<MonitoredJob> known) {
    const auto status = file ? file->status() : Platform::FileHandle::Status();
    if (status.kind != Platform::FileHandle::Kind::regular)
        return std::nullopt;
    const auto content = fillBuffer(*file, status.size);
    if (!content)
        return std::nullopt;
    if (content->size() < buffer_->size())
        return readSmallFile(*content, std::move(known));
    return readLargeFile(*content, *file, std::move(known));
}

std::optional<std::span<const std::byte>>
JobFileReader::fillBuffer(Platform::FileHandle& file, std::optional<std::uint64_t> size) {
    const std::span buffer(*buffer_);
    std::size_t filled = 0;
    while (filled < buffer.size() && (filled == 0 || filled != size)) {
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
                                          std::optional<MonitoredJob> known) {
    digest_.update(content);
    const auto checksum = digest_.finalize();
    if (known && known->checksum == checksum)
        return *std::move(known);
    auto lookup = labelLookup();
    lookup.append(content);
    return {.checksum = checksum, .label = lookup.finish()};
}

std::optional<MonitoredJob> JobFileReader::readLargeFile(std::span<const std::byte> beginning,
                                                         Platform::FileHandle& file,
                                                         std::optional<MonitoredJob> known) {
    // Looking for a label takes several times as long as hashing. What has none by its beginning,
    // and what is as it was, is only hashed; a list that has changed is read anew for both.
    const bool mayHaveLabel = labelLookup().append(beginning);
    if (known || !mayHaveLabel) {
        const auto content = readOn(beginning, file, [](const auto& /*piece*/) {});
        if (!content)
            return std::nullopt;
        if (!mayHaveLabel)
            return MonitoredJob{.checksum = content->checksum, .label = std::nullopt};
        if (content->checksum == known->checksum)
            return known;
        const auto again = file.rewind() ? fillBuffer(file) : std::nullopt;
        if (!again)
            return std::nullopt;
        beginning = *again;
    }
    auto lookup = labelLookup();
    bool isSought = true;
    const auto content = readOn(
        beginning, file, [&](const auto& piece) { isSought = isSought && lookup.append(piece); });
    if (!content)
        return std::nullopt;
    return MonitoredJob{.checksum = content->checksum,
                        .label = isSought && content->isWhole ? lookup.finish() : std::nullopt};
}

std::optional<JobFileReader::Content>
JobFileReader::readOn(std::span<const std::byte> beginning, Platform::FileHandle& file,
                      const std::function<void(std::span<const std::byte>)>& use) {
    std::uint64_t total = 0;
    std::optional<std::span<const std::byte>> content = beginning;
    while (content && !content->empty() && total < maximumRead_) {
        total += content->size();
        digest_.update(*content);
        use(*content);
        content = fillBuffer(file);
    }
    const bool isWhole = content && content->empty();
    if (!isWhole) {
        const auto size = file.size();
        digest_.update(std::as_bytes(std::span(&size, 1)));
    }
    const auto checksum = digest_.finalize(); // also where it is of no use: the next starts anew
    if (!content)
        return std::nullopt;
    return Content{.checksum = checksum, .isWhole = isWhole};
}

} // namespace Vesper_Pro_Agent
