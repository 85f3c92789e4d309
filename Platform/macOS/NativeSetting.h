#pragma once

#include "Platform/Native/NativeSetting.h"

#import <Foundation/Foundation.h>

#include <optional>
#include <string>
#include <string_view>

namespace Platform {

/// The value under the key, wherever the domain has it from.
std::optional<PropertyList> settingIn(NSUserDefaults* defaults, std::string_view key);

/// A key of a domain, which the system observes meanwhile.
class NativeSetting::Impl {
public:
    Impl(NSUserDefaults* defaults, std::string keyPath);
    ~Impl();
    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;
    Impl(Impl&&) = delete;
    Impl& operator=(Impl&&) = delete;

    std::optional<PropertyList> value() const { return settingIn(defaults_, keyPath_); }

private:
    NSUserDefaults* const defaults_; // kept, or the system would report nothing any more
    const std::string keyPath_;
    NSString* const key_;
    bool isRegistered_ = false;
};

} // namespace Platform
