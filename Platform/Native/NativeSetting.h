#pragma once

#include "Platform/PropertyList.h"

#include <memory>
#include <optional>
#include <vector>

namespace Platform {

/// What the system itself has for one setting that is observed. From its making to its end,
/// `ObservedSettings::compare` is called whenever the value may have changed. Any thread.
class NativeSetting {
public:
    class Impl;

    explicit NativeSetting(std::unique_ptr<Impl> impl);
    ~NativeSetting();
    NativeSetting(const NativeSetting&) = delete;
    NativeSetting& operator=(const NativeSetting&) = delete;
    NativeSetting(NativeSetting&&) = delete;
    NativeSetting& operator=(NativeSetting&&) = delete;

    /// The present values of several settings; absent those that have none. A domain is read once
    /// for all of its settings.
    static std::vector<std::optional<PropertyList>>
    values(const std::vector<const NativeSetting*>& settings);

private:
    const std::unique_ptr<Impl> impl_;
};

} // namespace Platform
