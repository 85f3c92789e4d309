#pragma once

#include <sys/types.h>

#include <optional>
#include <utility>

namespace Platform {

/// Tells folders that have no subfolder without reading them: where a file system counts the links
/// to a folder, a subfolder is one more than its name and its own ".". For one thread at a time.
class LeafFolders {
public:
    /// False for an open folder that may have subfolders. One that is made, or moved in, while
    /// this looks is counted before there is a record of it.
    bool contains(int folder);

private:
    bool countsSubfolders(dev_t device, int folder);

    std::optional<std::pair<dev_t, bool>> last_; ///< of most trees the only device
};

} // namespace Platform
