#pragma once

#include "CorbelKit/Services/NotificationPoster.h"
#include "Platform/Application.h"
#include "Vesper_Pro_Agent/JobComparison.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Vesper_Pro_Agent {

/// What the user does not want to be notified of. Thousands of entries cost a change no more than
/// a few.
class ChangeFilter {
public:
    using Texts = std::vector<std::string>;

    /// Excludes nothing.
    ChangeFilter() = default;

    /// Whole labels, and beginnings of labels, whatever their case. An empty one is no beginning.
    ChangeFilter(Texts exceptions, const Texts& excludePrefixes);

    bool isException(std::string_view name) const;
    bool beginsAsExcluded(std::string_view name) const;

private:
    Texts exceptions_; // in order
    Texts beginnings_; // in order, in lower case, none that begins as another
};

/// The user's side of the words: where home is, how text runs, what the texts are.
struct ChangeWording {
    std::string homePath;
    Platform::LayoutDirection layoutDirection;
    std::function<std::string(std::string_view englishText)> localizedString;

    /// That of the current user and process.
    static ChangeWording current();
};

/// Whether the user wants to be notified of the change. The job's name for this is its label; for a
/// job without one, and for a deleted job, the file's name.
bool isReported(const JobChange& change, const ChangeFilter& filter);

/// The notification of the change. Deletions share one identifier, so that each takes the place of
/// the one before it; otherwise the identifier is the job's path.
CorbelKit::PostedNotification describe(const JobChange& change, const ChangeWording& wording);

/// Posts one notification about the change. Main thread.
void postChange(const JobChange& change);

} // namespace Vesper_Pro_Agent
