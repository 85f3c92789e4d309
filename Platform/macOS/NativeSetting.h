#pragma once

#include "Platform/Native/NativeSetting.h"

#import <Foundation/Foundation.h>

#include <optional>
#include <string>
#include <string_view>

namespace Platform {

/// A domain of settings under its name. `objectForKey:` would search others as well: those of the
/// command line before it, and after it those that every program has.
/// A plain value.
struct SettingsDomain {
    NSUserDefaults* defaults; ///< kept, or the system would report nothing any more
    NSString* name;

    /// What is stored in the domain itself; or else the registered default.
    std::optional<PropertyList> value(std::string_view key) const;
};

/// A key of a domain, which the system observes meanwhile.
class NativeSetting::Impl {
public:
    Impl(SettingsDomain domain, std::string keyPath);
    ~Impl();
    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;
    Impl(Impl&&) = delete;
    Impl& operator=(Impl&&) = delete;

    std::optional<PropertyList> value() const { return domain_.value(keyPath_); }

private:
    const SettingsDomain domain_;
    const std::string keyPath_;
    NSString* const key_;
    bool isRegistered_ = false;
};

} // namespace Platform
