#include "Platform/FileContents.h"

#include <array>
#include <ctime>
#include <filesystem>

namespace Platform::FileContents {
namespace {

/// The user's clock: "2026-11-22 071530". Not the calendar's, which loads a library of its own.
std::string timeNow() {
    const auto now = std::time(nullptr);
    std::tm local{};
    std::array<char, 32> text{};
    if (localtime_r(&now, &local) == nullptr)
        return {};
    return {text.data(), std::strftime(text.data(), text.size(), "%Y-%m-%d %H%M%S", &local)};
}

} // namespace

Expected<std::string> setAside(const URL& file) {
    if (isMissing(file))
        return std::string();
    const std::filesystem::path name = file.lastPathComponent();
    const auto beginning = name.stem().string() + " (unreadable " + timeNow();
    for (int attempt = 1;; ++attempt) {
        const auto number = attempt > 1 ? ", " + std::to_string(attempt) : std::string();
        const auto newName = beginning + number + ")" + name.extension().string();
        const auto renamed = rename(file, file.deletingLastPathComponent().appending(
                                              newName, URL::DirectoryHint::notDirectory));
        if (!renamed)
            return renamed.error();
        if (*renamed)
            return file.path() + ": could not be read, and is kept as \"" + newName + "\"";
    }
}

} // namespace Platform::FileContents
