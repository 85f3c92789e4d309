#pragma once

#include "Platform/Digest.h"

#include <optional>
#include <string>

namespace Vesper_Pro_Agent {

/// One job file as last seen.
struct MonitoredJob {
    Platform::SHA256::Value checksum; ///< of the file's complete content

    /// The text under "Label", when the file is a property list that has one; its first kibibyte,
    /// which is far more than any job's name. Absent stands for the empty text.
    std::optional<std::string> label;
};

} // namespace Vesper_Pro_Agent
