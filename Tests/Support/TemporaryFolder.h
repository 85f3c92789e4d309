#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace TestSupport {

/// A new folder under the system's temporary folder, removed with all it holds at the end.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }

    std::filesystem::path operator/(std::string_view relative) const { return path_ / relative; }

private:
    std::filesystem::path path_;
};

/// Writes the file in place, making it where it is missing.
void writeFile(const std::filesystem::path& path, std::string_view content);

/// All bytes of the file; none where it cannot be read.
std::string contentOf(const std::filesystem::path& path);

/// Writes beside the file and renames, as careful programs save.
void replaceFile(const std::filesystem::path& path, std::string_view content);

} // namespace TestSupport
