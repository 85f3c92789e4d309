#include "Platform/FileManager.h"
#include "Tests/Platform/BundleFolder.h"

#include <gtest/gtest.h>

TEST(FileManager, DisplaysAnInstalledApplicationInTheUsersLanguage) {
    const TestSupport::TemporaryFolder data;
    const TestSupport::EnvironmentVariable home("XDG_DATA_HOME", data.path().string());
    const Languages user("de_DE.UTF-8");
    const auto applications = data / "applications";
    std::filesystem::create_directory(applications);
    const std::string entry = "[Desktop Entry]\nType=Application\nName=Settings\n"
                              "Name[de]=Einstellungen\nExec=true\n";
    TestSupport::writeFile(applications / "settings.desktop", entry);
    TestSupport::writeFile(applications / "removed.desktop", entry + "Hidden=true\n");
    TestSupport::writeFile(data / "settings.desktop", entry);
    const auto nameOf = [](const std::filesystem::path& path) {
        return Platform::FileManager::displayName(Platform::URL::file(path.string()));
    };
    EXPECT_EQ(nameOf(applications / "settings.desktop"), "Einstellungen");
    EXPECT_EQ(nameOf(applications / "removed.desktop"), "removed.desktop");
    EXPECT_EQ(nameOf(data / "settings.desktop"), "settings.desktop"); // from anywhere
}
