#include "Tests/Support/Linux/MainApplication.h"

#include "Tests/Support/TemporaryFolder.h"

namespace TestSupport {

void installMainApplication(const std::filesystem::path& home, const std::string& linesOfEntry) {
    const auto entries = home / ".local/share/applications";
    std::filesystem::create_directories(entries);
    std::filesystem::create_directories(home / ".config");
    writeFile(entries / "com.tarnwell.VesperPro10.desktop",
              "[Desktop Entry]\nType=Application\n" + linesOfEntry +
                  "MimeType=x-scheme-handler/vesperpro10joburl;\n");
    writeFile(home / ".config/mimeapps.list",
              "[Default Applications]\n"
              "x-scheme-handler/vesperpro10joburl=com.tarnwell.VesperPro10.desktop\n");
}

} // namespace TestSupport
