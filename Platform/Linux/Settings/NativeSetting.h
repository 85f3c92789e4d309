#pragma once

#include "Platform/Linux/Settings/DomainFile.h"
#include "Platform/Native/NativeSetting.h"

#include <string>

namespace Platform {

/// A key of a domain, whose file is watched meanwhile.
class NativeSetting::Impl {
public:
    Impl(DomainFile file, std::string key);
    ~Impl();
    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;
    Impl(Impl&&) = delete;
    Impl& operator=(Impl&&) = delete;

    const DomainFile file;
    const std::string key;
};

} // namespace Platform
