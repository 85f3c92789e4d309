#include "Platform/FileManager.h"
#include "Tests/Support/Testing.h"

#include <sys/stat.h>

using namespace TestSupport;
using Platform::URL;
using testing::Optional;
namespace FileManager = Platform::FileManager;

TEST(FileManager, ListsEveryEntryOnceAndFoldersAloneAsFolders) {
    const TemporaryFolder folder;
    const auto here = folderURL(folder.path());
    const auto elsewhere = *URL::parse("https://host/a/b");
    writeFile(folder / ".hidden", "");
    writeFile(folder / "café %41", "");
    fs::create_directory(folder / "folder");
    fs::create_directory_symlink("folder", folder / "link to folder");
    fs::create_symlink("nowhere", folder / "dangling");
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_THAT(
        FileManager::contentsOfDirectory(here),
        Optional(testing::UnorderedElementsAre(
            here.appending(".hidden"), here.appending("café %41"), here.appending("folder/"),
            here.appending("link to folder"), here.appending("dangling"), here.appending("pipe"))));

    EXPECT_THAT(FileManager::contentsOfDirectory(here.appending("folder")),
                Optional(testing::IsEmpty()));
    for (const auto& noFolder : {here.appending("missing"), here.appending(".hidden"), elsewhere})
        EXPECT_FALSE(FileManager::contentsOfDirectory(noFolder)) << noFolder.absoluteString();
}
