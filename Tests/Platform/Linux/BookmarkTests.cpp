// Bookmarks as the records that they are here, of files that anybody may move and replace.

#include "Platform/Bookmark.h"
#include "Platform/Linux/Files/Bookmark/MovedFileSearch.h"
#include "Tests/Support/Testing.h"

using namespace Platform;
using namespace TestSupport;

namespace {

class Bookmark : public ::testing::Test {
protected:
    Bookmark() {
        fs::create_directories(folder / "a/b/below");
        fs::create_directories(folder / "c/d");
        writeFile(file, "");
    }

    /// As an attacker would write it.
    BookmarkData altered(const std::string& key, const PropertyList& value) const {
        auto record = std::get<PropertyList::Dictionary>(PropertyList::read(bookmark())->value());
        record.insert_or_assign(key, value);
        if (value.get<PropertyList::Null>() != nullptr)
            record.erase(key);
        return *PropertyList(record).write(PropertyList::Format::binary);
    }

    BookmarkData bookmark() const { return *makeBookmark(fileURL(file)); }

    static SecurityScopedResource resolved(const BookmarkData& data) {
        auto resource = SecurityScopedResource::resolve(data);
        EXPECT_TRUE(resource);
        return std::move(*resource);
    }

    const TemporaryFolder temporary;
    /// Deep enough that a search down here is over before one up there comes to what other tests
    /// may have left by the ten thousand.
    const fs::path folder = temporary / "1/2/3/4/5/6";
    const fs::path file = folder / "a/b/\xFFile"; // no text
};

TEST_F(Bookmark, FindsTheFileWhereverItWasMovedNearby) {
    const auto name = file.filename();
    const std::pair<std::function<void()>, fs::path> moves[] = {
        {[] {}, file},
        {[&] { fs::rename(file, folder / "a/b/other"); }, folder / "a/b/other"},
        {[&] { fs::rename(file, folder / "a/b/below/x"); }, folder / "a/b/below/x"},
        {[&] { fs::rename(file, folder / "x"); }, folder / "x"},
        {[&] { fs::rename(file, folder / "c/d/x"); }, folder / "c/d/x"},
        {[&] { fs::rename(folder / "a/b", folder / "a/e"); }, folder / "a/e" / name},
        {[&] { fs::rename(folder / "a", folder / "c/d/a"); }, folder / "c/d/a/b" / name},
    };
    const auto descriptors = openDescriptors();
    for (const auto& [move, place] : moves) {
        const auto data = bookmark();
        move();
        const auto resource = resolved(data);
        EXPECT_EQ(resource.url(), fileURL(place));
        EXPECT_EQ(resource.isStale(), place != file) << place;
        const auto fresh = resource.makeBookmark();
        ASSERT_TRUE(fresh);
        EXPECT_EQ(resolved(*fresh).url(), fileURL(place));
        EXPECT_FALSE(resolved(*fresh).isStale()) << place;
        if (place != file) {
            fs::create_directories(folder / "a/b/below");
            fs::rename(place, file);
        }
    }
    EXPECT_EQ(openDescriptors(), descriptors);
}

TEST_F(Bookmark, TakesWhatCameInTheFilesPlaceOnlyWhereTheFileIsGone) {
    const auto data = bookmark();
    fs::rename(file, folder / "c/kept");
    writeFile(file, "");
    EXPECT_EQ(resolved(data).url(), fileURL(folder / "c/kept"));
    // Its number is free now, and the next file may well get it.
    fs::remove(folder / "c/kept");
    fs::remove(file);
    writeFile(file, "");
    for (int save = 0; save < 2; ++save) { // as editors do
        const auto resource = resolved(data);
        EXPECT_EQ(resource.url(), fileURL(file));
        EXPECT_TRUE(resource.isStale());
        EXPECT_FALSE(resolved(*resource.makeBookmark()).isStale());
        replaceFile(file, "saved");
    }
    fs::remove(file);
    fs::create_directory(file);
    EXPECT_FALSE(SecurityScopedResource::resolve(data));
}

TEST_F(Bookmark, IsOfALinkAndNotOfWhatItLeadsTo) {
    const auto link = folder / "link";
    fs::create_symlink(file, link);
    auto data = makeBookmark(fileURL(link));
    ASSERT_TRUE(data);
    EXPECT_EQ(resolved(*data).url(), fileURL(link));
    fs::remove(link);
    EXPECT_FALSE(SecurityScopedResource::resolve(*data));
}

TEST_F(Bookmark, KnowsTheFileByItsBirthWhenItsDeviceHasAnotherNumber) {
    const auto renumbered = altered("Device", std::int64_t{0x7FFF'FFFF});
    EXPECT_TRUE(resolved(renumbered).isStale());
    EXPECT_FALSE(resolved(*resolved(renumbered).makeBookmark()).isStale());
    fs::rename(file, folder / "moved"); // on which other device, is not known
    EXPECT_FALSE(SecurityScopedResource::resolve(renumbered));
}

TEST_F(Bookmark, IsAbsentFromBytesThatAreNone) {
    const auto whole = bookmark();
    for (auto end = whole.begin(); end != whole.end(); ++end)
        EXPECT_FALSE(SecurityScopedResource::resolve({whole.begin(), end}));
    const auto path = [](std::string_view text) {
        return PropertyList::Data(bytesOf(text).begin(), bytesOf(text).end());
    };
    const std::pair<const char*, PropertyList> alterations[] = {
        {"Path", std::string("/etc/passwd")},
        {"Path", path("etc/passwd")},
        {"Path", path(file.string() + std::string("\0x", 2))},
        {"Path", path("/" + std::string(5000, 'x'))},
        {"Path", PropertyList::Null()},
        {"Device", std::int64_t{-1}},
        {"Device", PropertyList::Null()},
        {"Inode", PropertyList::Null()},
        {"Folder", std::int64_t{0}},
    };
    for (const auto& [key, value] : alterations)
        EXPECT_FALSE(SecurityScopedResource::resolve(altered(key, value))) << key;
    // A whole record, of nothing that there is.
    EXPECT_FALSE(SecurityScopedResource::resolve(altered("Folder", true)));
}

TEST_F(Bookmark, IsSoughtOnlyAsFarAsTheSearchMayGo) {
    const auto identity = *FileIdentity::at(file);
    fs::rename(file, folder / "c/d/x");
    for (int i = 0; i < 20; ++i)
        writeFile(folder / "a/b" / std::to_string(i), "");
    EXPECT_FALSE(MovedFileSearch(identity, 20).find(file));
    EXPECT_EQ(MovedFileSearch(identity).find(file), folder / "c/d/x");
    // Of two in one folder, one entry can show but one.
    const auto finds = [&](const char* name) {
        return MovedFileSearch(*FileIdentity::at(folder / "a/b" / name), 1).find(file).has_value();
    };
    EXPECT_FALSE(finds("0") && finds("1"));
}

TEST_F(Bookmark, GivesNoAccessToWhatCameInItsPlaceSinceItWasFound) {
    const auto before = openDescriptors();
    auto resource = resolved(bookmark());
    replaceFile(file, "");
    EXPECT_FALSE(resource.startAccessing());
    EXPECT_FALSE(resource.makeBookmark());
    fs::remove(file);
    EXPECT_FALSE(resource.startAccessing());
    EXPECT_EQ(openDescriptors(), before);
}

} // namespace
