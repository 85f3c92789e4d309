#pragma once

#include "CorbelKit/Coding/Coding.h"

#include <cstdint>

/// What helper and client have in common: the name, the method "measure" with the path of a folder,
/// and its value.
namespace Helper {

constexpr auto name = "org.example.FolderHelper";
constexpr auto measure = "measure";

/// The helper's word for a path where there is no folder that it can list.
constexpr auto noSuchFolder = "org.example.FolderHelper.NoSuchFolder";

struct FolderSize {
    std::int64_t entries = 0; ///< in the folder itself
    std::int64_t folders = 0; ///< of these

    static FolderSize decode(const CorbelKit::Decoder& decoder) {
        const auto container = decoder.container();
        return {.entries = container.decode<std::int64_t>("entries"),
                .folders = container.decode<std::int64_t>("folders")};
    }

    void encode(CorbelKit::Encoder& encoder) const {
        auto container = encoder.container();
        container.encode("entries", entries);
        container.encode("folders", folders);
    }
};

} // namespace Helper
