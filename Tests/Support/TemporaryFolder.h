#pragma once

#include <filesystem>
#include <string_view>

namespace TestSupport {

/// A new folder under the system's temporary folder, removed with all it holds at the end.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    TemporaryFolder(TemporaryFolder&&) = delete;
    TemporaryFolder& operator=(TemporaryFolder&&) = delete;

    const std::filesystem::path& path() const { return path_; }

    std::filesystem::path operator/(std::string_view relative) const { return path_ / relative; }

private:
    std::filesystem::path path_;
};

/// Writes the file in place, making it where it is missing.
void writeFile(const std::filesystem::path& path, std::string_view content);

/// Writes beside the file and renames, as careful programs save.
void replaceFile(const std::filesystem::path& path, std::string_view content);

} // namespace TestSupport
