#pragma once

#include "Platform/Digest.h"

#include <map>
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

/// Job files by their path, which is bytes in the file system's form. Ordered, so that changes
/// found together are reported in a steady order.
using JobSnapshot = std::map<std::string, MonitoredJob, std::less<>>;

} // namespace Vesper_Pro_Agent
