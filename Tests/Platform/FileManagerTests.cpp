#include "Platform/FileManager.h"
#include "Tests/Support/EnvironmentVariable.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

using Platform::URL;
using testing::ElementsAre;
using testing::Optional;
using testing::UnorderedElementsAre;
namespace FileManager = Platform::FileManager;

TEST(FileManager, ListsEveryEntryOnceAndFoldersAloneAsFolders) {
    const TestSupport::TemporaryFolder folder;
    TestSupport::writeFile(folder / ".hidden", "");
    TestSupport::writeFile(folder / "bad\xFF name", "");
    std::filesystem::create_directory(folder / "folder");
    std::filesystem::create_directory_symlink("folder", folder / "link to folder");
    std::filesystem::create_symlink("nowhere", folder / "dangling");
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);

    const auto here = URL::file(folder.path().string(), URL::DirectoryHint::isDirectory);
    EXPECT_THAT(
        FileManager::contentsOfDirectory(here),
        Optional(UnorderedElementsAre(here.appending(".hidden"), here.appending("bad\xFF name"),
                                      here.appending("folder/"), here.appending("link to folder"),
                                      here.appending("dangling"), here.appending("pipe"))));
}

TEST(FileManager, TellsAnEmptyFolderFromOneThatCannotBeListed) {
    const TestSupport::TemporaryFolder folder;
    TestSupport::writeFile(folder / "file", "");
    std::filesystem::create_directory(folder / "empty");
    const auto here = URL::file(folder.path().string());
    EXPECT_THAT(FileManager::contentsOfDirectory(here.appending("empty")),
                Optional(testing::IsEmpty()));
    EXPECT_FALSE(FileManager::contentsOfDirectory(here.appending("missing")));
    EXPECT_FALSE(FileManager::contentsOfDirectory(here.appending("file")));
    EXPECT_FALSE(FileManager::contentsOfDirectory(*URL::parse("https://host/")));
}

TEST(FileManager, FollowsLinksWhenAskedWhetherAFileExists) {
    const TestSupport::TemporaryFolder folder;
    TestSupport::writeFile(folder / "file", "");
    std::filesystem::create_symlink("file", folder / "link");
    std::filesystem::create_symlink("nowhere", folder / "dangling");
    std::filesystem::create_symlink("circular", folder / "circular");
    const auto here = URL::file(folder.path().string(), URL::DirectoryHint::isDirectory);
    EXPECT_TRUE(FileManager::fileExists(here));
    EXPECT_TRUE(FileManager::fileExists(here.appending("file")));
    EXPECT_TRUE(FileManager::fileExists(here.appending("link")));
    EXPECT_FALSE(FileManager::fileExists(here.appending("dangling")));
    EXPECT_FALSE(FileManager::fileExists(here.appending("circular")));
    EXPECT_FALSE(FileManager::fileExists(*URL::parse("https://host" + here.path())));
    // The system would see only the part before the NUL, and find it.
    EXPECT_FALSE(FileManager::fileExists(here.appending(std::string_view("file\0x", 6))));
}

TEST(FileManager, TakesTheHomeFolderFromThePasswordDatabaseNotFromTheEnvironment) {
    const TestSupport::EnvironmentVariable home("HOME", "/elsewhere");
    const auto* const entry = getpwuid(getuid());
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(FileManager::homeDirectoryForRealUser(),
              URL::file(entry->pw_dir, URL::DirectoryHint::isDirectory));
}

TEST(FileManager, TakesTheLocalLibraryElsewhereOnlyByAnAbsolutePath) {
    const auto system = URL::file("/Library/");
    for (const auto* standIn : {"", "relative/Library"}) {
        const TestSupport::EnvironmentVariable variable("CORBEL_LOCAL_LIBRARY", standIn);
        EXPECT_THAT(FileManager::localLibraryDirectories(), ElementsAre(system));
    }
    const TestSupport::EnvironmentVariable variable("CORBEL_LOCAL_LIBRARY", "/trial/Library");
    EXPECT_THAT(FileManager::localLibraryDirectories(), ElementsAre(URL::file("/trial/Library/")));
}
