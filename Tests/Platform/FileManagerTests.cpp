#include "Platform/FileManager.h"
#include "Tests/Support/EnvironmentVariable.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

using Platform::URL;
using testing::Optional;
namespace FileManager = Platform::FileManager;

TEST(FileManager, ListsEveryEntryOnceAndFoldersAloneAsFolders) {
    const TestSupport::TemporaryFolder folder;
    TestSupport::writeFile(folder / ".hidden", "");
    TestSupport::writeFile(folder / "caf\u00E9 %41", "");
    std::filesystem::create_directory(folder / "folder");
    std::filesystem::create_directory_symlink("folder", folder / "link to folder");
    std::filesystem::create_symlink("nowhere", folder / "dangling");
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);

    const auto here = URL::file(folder.path().string(), URL::DirectoryHint::isDirectory);
    EXPECT_THAT(
        FileManager::contentsOfDirectory(here),
        Optional(testing::UnorderedElementsAre(
            here.appending(".hidden"), here.appending("caf\u00E9 %41"), here.appending("folder/"),
            here.appending("link to folder"), here.appending("dangling"), here.appending("pipe"))));
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

TEST(FileManager, DisplaysAnOrdinaryItemUnderItsOwnName) {
    const TestSupport::TemporaryFolder folder;
    TestSupport::writeFile(folder / "caf\u00E9.txt", "");
    const auto here = URL::file(folder.path().string());
    EXPECT_EQ(FileManager::displayName(here.appending("caf\u00E9.txt")), "caf\u00E9.txt");
    EXPECT_EQ(FileManager::displayName(here.appending("missing")), "missing");
    EXPECT_EQ(FileManager::displayName(*URL::parse("https://host/a/b")), "b");
}

TEST(FileManager, ResolvesLinksAsFarAsThePathExists) {
    const TestSupport::TemporaryFolder folder;
    const auto real = URL::file(std::filesystem::canonical(folder.path()).string());
    std::filesystem::create_directory(folder / "folder");
    std::filesystem::create_directory_symlink("folder", folder / "link");
    const auto here = URL::file(folder.path().string());
    for (const auto& [path, resolved] :
         {std::pair{"link", "folder"}, {"link/", "folder/"}, {"link/missing", "folder/missing"}}) {
        EXPECT_EQ(FileManager::resolvingSymlinksInPath(here.appending(path)),
                  real.appending(resolved));
    }
    const auto elsewhere = *URL::parse("https://host/link");
    EXPECT_EQ(FileManager::resolvingSymlinksInPath(elsewhere), elsewhere);
}
