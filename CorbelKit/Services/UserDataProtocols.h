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

    /// Saves before it returns, past the saves that are queued. A failed write is told to the user
    /// and to the system log; a value that cannot be encoded leaves the file untouched, silently.
    void saveSynchronously() const {
        const auto file = url();
        if (!file)
            return;
        const auto data = PropertyListEncoder::binary().encode(userData());
        if (!data)
            return;
        if (const auto error = UserDataFile::write(*data, *file, "Sync saving user data"))
            UserDataFile::report(*error);
    }

protected:
    UserDataProtocol() = default;
    UserDataProtocol(const UserDataProtocol&) = default;
    UserDataProtocol& operator=(const UserDataProtocol&) = default;
};

} // namespace CorbelKit
