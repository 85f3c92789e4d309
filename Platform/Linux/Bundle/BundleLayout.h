#pragma once

#include "Platform/URL.h"

namespace Platform {

/// Where a bundle keeps its things, by the folders that it has. The layouts are those of Core
/// Foundation: an application (Contents), a framework (Resources, or those of its current version),
/// the old one with Support Files, and the shallow one that keeps all in the bundle's own folder.
struct BundleLayout {
    /// Nothing of it need exist: every folder counts as a shallow bundle at least.
    static BundleLayout of(const URL& bundle);

    URL information; ///< Info.plist
    URL resources;
};

} // namespace Platform
