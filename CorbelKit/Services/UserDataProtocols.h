#pragma once

#include "CorbelKit/Services/QueuedSave.h"
#include "CorbelKit/Services/UserDataFile.h"
#include "Platform/URL.h"

#include <optional>

namespace CorbelKit {

/// A model of user data that is kept in a file, as a binary property list. On the thread of the
/// model.
template <class Value>
class UserDataProtocol {
public:
    virtual ~UserDataProtocol() = default;

    /// What is to be saved, as it is now: any value with a `Coding` that is a dictionary or a list.
    virtual Value userData() const = 0;

    /// Absent where there is no place to save to; saving then does nothing.
    virtual std::optional<Platform::URL> url() const = 0;

    /// Saves in the background and returns at once.
    void save() const {
        if (auto file = url())
            QueuedSave::shared().save(userData(), std::move(*file));
    }

    /// Saves before it returns, past the saves that are queued, none of which replaces this one
    /// later. A value that cannot be encoded, or a failed write, leaves the file as it was, and is
    /// reported to the user, to the system log and to the caller.
    std::optional<Platform::Error> saveSynchronously() const {
        const auto file = url();
        if (!file)
            return std::nullopt;
        const auto data = PropertyListEncoder::binary().encode(userData());
        auto error = data ? UserDataFile::write(*data, *file, "Sync saving user data")
                          : Platform::Error{file->path() + ": " + data.error().error().description};
        if (error)
            UserDataFile::report(*error);
        return error;
    }

protected:
    UserDataProtocol() = default;
    UserDataProtocol(const UserDataProtocol&) = default;
    UserDataProtocol& operator=(const UserDataProtocol&) = default;
};

} // namespace CorbelKit
