#pragma once

#include "Platform/Expected.h"
#include "Platform/URL.h"

#include <cstddef>
#include <string>
#include <vector>

/// What a bundle is read from: a folder, or, under a URL of the scheme "resource", data that were
/// linked into the program and that GLib knows by their path (GResource).
namespace Platform::BundleFiles {

bool exist(const URL& place);

/// A failure also where the file is larger.
Expected<std::vector<std::byte>> read(const URL& file, std::size_t largestSize);

/// Of what a folder holds; empty where there is none.
std::vector<std::string> names(const URL& folder);

} // namespace Platform::BundleFiles
