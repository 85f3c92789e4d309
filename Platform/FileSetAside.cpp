#include "Platform/Calendar.h"
#include "Platform/FileContents.h"

#include <chrono>
#include <filesystem>

namespace Platform::FileContents {
namespace {

std::string twoDigits(int number) {
    const auto digits = std::to_string(number);
    return digits.size() < 2 ? "0" + digits : digits;
}

/// The user's clock: "2026-11-22 071530".
std::string timeNow() {
    const auto now = Calendar::gregorian().dateComponents(
        std::chrono::time_point_cast<Calendar::Date::duration>(std::chrono::system_clock::now()));
    if (!now)
        return {};
    return std::to_string(now->year) + "-" + twoDigits(now->month) + "-" + twoDigits(now->day) +
           " " + twoDigits(now->hour) + twoDigits(now->minute) + twoDigits(now->second);
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
