#pragma once

#include <filesystem>
#include <string>

namespace TestSupport {

/// Installs the main application for the user with that home: its desktop entry, of which the
/// lines given are a part, and that it opens links to jobs.
void installMainApplication(const std::filesystem::path& home, const std::string& linesOfEntry);

} // namespace TestSupport
