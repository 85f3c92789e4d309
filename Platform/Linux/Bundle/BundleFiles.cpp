#include "Platform/Linux/Bundle/BundleFiles.h"

#include "Platform/FileContents.h"
#include "Platform/FileManager.h"

#include <gio/gio.h>

#include <memory>

namespace Platform::BundleFiles {
namespace {

bool isLinked(const URL& place) {
    return place.absoluteString().starts_with("resource:");
}

struct BytesRelease {
    void operator()(GBytes* bytes) const { g_bytes_unref(bytes); }
};

using Bytes = std::unique_ptr<GBytes, BytesRelease>;

Bytes linkedBytes(const URL& file) {
    return Bytes(
        g_resources_lookup_data(file.path().c_str(), G_RESOURCE_LOOKUP_FLAGS_NONE, nullptr));
}

std::vector<std::string> linkedNames(const URL& folder) {
    const std::unique_ptr<char*, decltype(&g_strfreev)> listed(
        g_resources_enumerate_children(folder.path().c_str(), G_RESOURCE_LOOKUP_FLAGS_NONE,
                                       nullptr),
        g_strfreev);
    std::vector<std::string> names;
    for (char** name = listed.get(); name != nullptr && *name != nullptr; ++name) {
        names.emplace_back(*name);
        if (names.back().ends_with('/')) // a folder
            names.back().pop_back();
    }
    return names;
}

} // namespace

bool exist(const URL& place) {
    if (!isLinked(place))
        return FileManager::fileExists(place);
    return linkedBytes(place) || !linkedNames(place).empty();
}

Expected<std::vector<std::byte>> read(const URL& file, std::size_t largestSize) {
    if (!isLinked(file))
        return FileContents::read(file, largestSize);
    const auto bytes = linkedBytes(file);
    gsize size = 0;
    const auto* const data =
        bytes ? static_cast<const std::byte*>(g_bytes_get_data(bytes.get(), &size)) : nullptr;
    if (data == nullptr || size > largestSize)
        return Error{"no such file in the program: " + file.path()};
    return std::vector<std::byte>(data, data + size);
}

std::vector<std::string> names(const URL& folder) {
    if (isLinked(folder))
        return linkedNames(folder);
    std::vector<std::string> names;
    const auto entries = FileManager::contentsOfDirectory(folder);
    for (const auto& entry : entries.value_or(std::vector<URL>{}))
        names.push_back(entry.lastPathComponent());
    return names;
}

} // namespace Platform::BundleFiles
