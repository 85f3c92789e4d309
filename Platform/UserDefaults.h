#pragma once

#include "Platform/Expected.h"
#include "Platform/PropertyList.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Platform {

class NativeSetting;

/// The user's settings of one domain, shared by all processes that open it. A handle: copies mean
/// the same domain. Callable on any thread.
///
/// A value is seen as it was last stored in this domain by any process; where none is stored there,
/// the registered default counts, and nothing else. Settings that cannot be read count as none.
class UserDefaults {
public:
    /// Gets the value as it is by then.
    using Handler = std::function<void(const std::string& keyPath,
                                       const std::optional<PropertyList>& newValue)>;

    /// A subscription to one key, which ends with the object. When the destructor has returned, the
    /// handler neither runs nor will run, unless it is the handler itself that ends it.
    class Observation {
    public:
        Observation(Observation&& other) noexcept;
        Observation& operator=(Observation&& other) noexcept;
        Observation(const Observation&) = delete;
        Observation& operator=(const Observation&) = delete;
        ~Observation();

    private:
        friend class UserDefaults;
        class Impl;
        explicit Observation(std::unique_ptr<Impl> impl);

        std::unique_ptr<Impl> impl_;
    };

    /// The domain of the application: named by its bundle's identifier, or by its executable where
    /// the bundle has none.
    static UserDefaults& standard();

    /// The domain of a group of applications; under the name of the standard domain, that one.
    /// Absent when it cannot be opened: for a name that no file can have, and where no settings can
    /// be kept.
    static std::optional<UserDefaults> suite(std::string_view suiteName);

    /// The value under the key, whatever it is.
    std::optional<PropertyList> object(std::string_view key) const;
    /// @{
    /// The value under the key; absent where there is none of this kind.
    std::optional<std::string> string(std::string_view key) const;
    std::optional<PropertyList::Data> data(std::string_view key) const;
    /// @}

    /// A number without its fraction, a switch as 1 or 0, a text that is a whole decimal number.
    /// Absent where there is none of these, and beyond 64 bits.
    std::optional<std::int64_t> integer(std::string_view key) const;

    /// A switch, any number but 0, a text that is such a whole number; "yes" and "true", "no" and
    /// "false" however their letters are cased. Absent where there is none of these.
    std::optional<bool> boolean(std::string_view key) const;

    /// Absent also when one element is no text.
    std::optional<std::vector<std::string>> stringArray(std::string_view key) const;

    /// Stored when the call returns; or else gives the reason, and what was stored before stays.
    /// Waits for other processes that are storing in the same domain. What holds the domain but is
    /// not understood is kept under another name, which the system log says, not overwritten.
    std::optional<Error> set(std::string_view key, PropertyList value);
    /// As `set`; the registered default counts again.
    std::optional<Error> remove(std::string_view key);

    /// Adds to the defaults that count, in this process only, in every domain that has no value.
    void registerDefaults(const PropertyList::Dictionary& defaults);

    /// Has the handler called when the key's value has become another one, by whichever process;
    /// absent when there is none any more. There is no call for the present value, and for changes
    /// in quick succession perhaps only the last. Handlers run on a queue of their own, one at a
    /// time: they must not wait for each other.
    [[nodiscard]] Observation observe(const std::string& keyPath, Handler handler) const;

private:
    class Impl;
    explicit UserDefaults(std::shared_ptr<const Impl> impl);

    std::unique_ptr<NativeSetting> nativeSetting(const std::string& keyPath) const;

    std::shared_ptr<const Impl> impl_;
};

} // namespace Platform
