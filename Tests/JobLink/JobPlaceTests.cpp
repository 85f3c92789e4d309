// Which links lead to a file, and what is opened of what they lead to.

#include "Platform/Base64.h"
#include "Tests/Support/Testing.h"
#include "Tools/JobLink/Core/JobFile.h"

#include <sys/stat.h>

namespace {

using namespace TestSupport;
using JobLink::JobFile;

std::string linkTo(std::string_view path) {
    return "vesperpro10joburl://" + Platform::base64EncodedString(path);
}

TEST(JobPlace, IsThatOfTheOneSpellingOfAPathInAWatchedFolder) {
    using namespace std::string_literals;
    const std::vector folders{folderURL("/etc/xdg/autostart"),
                              folderURL("/root/.config/autostart")};

    struct Case {
        std::string link;
        std::string name; // empty: refused
    };

    const std::string folder = "/etc/xdg/autostart/";
    const Case cases[] = {
        {linkTo(folder + "a.desktop"), "a.desktop"},
        {linkTo("/root/.config/autostart/b"), "b"},
        {linkTo(folder + "\xFF~?"), "\xFF~?"}, // a name is bytes; "/" and "+" in the Base64
        {linkTo(folder + ".hidden"), ".hidden"},
        {linkTo("/etc/passwd"), ""},
        {linkTo("/etc/xdg/autostart"), ""},
        {linkTo(folder), ""},
        {linkTo(folder + "."), ""},
        {linkTo(folder + ".."), ""},
        {linkTo(folder + "../passwd"), ""},
        {linkTo("/etc/xdg/../xdg/autostart/a"), ""},
        {linkTo("/etc/xdg//autostart/a"), ""},
        {linkTo(folder + "/a"), ""},
        {linkTo(folder + "sub/a"), ""},
        {linkTo("autostart/a"), ""},
        {linkTo("a"), ""},
        {linkTo(folder + "a\0.desktop"s), ""},
        {linkTo(folder + std::string(5000, 'a')), ""},
        {"vesperpro10joburl://" + std::string(20'000'000, 'A'), ""},
        {linkTo(folder + "a.desktop") + "\n", ""},
        {linkTo(folder + "a.desktop") + "/", ""},
        {" " + linkTo(folder + "a.desktop"), ""},
        {"vesperpro10joburl://L2V0 Yy94ZGcvYXV0b3N0YXJ0L2E=", ""},
        {"vesperpro10joburl://L2V0Yy94ZGcvYXV0b3N0YXJ0L2E", ""},  // unpadded
        {"vesperpro10joburl://L2V0Yy94ZGcvYXV0b3N0YXJ0L2F=", ""}, // stray bits
        {"vesperpro10joburl://", ""},
        {"vesperpro10joburl:L2V0Yy94ZGcvYXV0b3N0YXJ0L2E=", ""},
        {"VESPERPRO10JOBURL://L2V0Yy94ZGcvYXV0b3N0YXJ0L2E=", ""},
        {"file:///etc/xdg/autostart/a", ""},
        {"", ""},
    };
    for (const auto& [link, name] : cases) {
        SCOPED_TRACE(link.substr(0, 100));
        const auto path = JobLink::pathInLink(link);
        const auto place = path ? JobLink::jobPlace(*path, folders) : std::nullopt;
        EXPECT_EQ(place ? place->name : "", name);
        EXPECT_TRUE(!place || place->path() == *path);
    }
}

class JobFileReading : public ::testing::Test {
protected:
    std::optional<JobFile> read(const std::string& name) {
        return JobLink::readJobFile({.folder = folderURL(folder.path()), .name = name});
    }

    TemporaryFolder folder;
};

TEST_F(JobFileReading, OpensRegularFilesAloneAndFollowsNoLink) {
    using Reading = JobFile::Reading;
    TemporaryFolder elsewhere;
    writeFile(elsewhere / "secret", "secret");
    writeFile(folder / "job", "content");
    fs::permissions(folder / "job", fs::perms(0640));
    fs::create_directory(folder / "folder");
    fs::create_symlink(elsewhere / "secret", folder / "out");
    fs::create_symlink("nowhere", folder / "dangling.plist");
    mkfifo((folder / "fifo").c_str(), S_IRUSR | S_IWUSR);
    const std::vector<std::pair<std::string, Reading>> cases{{"job", Reading::read},
                                                             {"folder", Reading::notRegular},
                                                             {"out", Reading::link},
                                                             {"dangling.plist", Reading::link},
                                                             {"fifo", Reading::notRegular}};
    for (const auto& [name, reading] : cases) {
        SCOPED_TRACE(name);
        const auto file = read(name);
        ASSERT_TRUE(file);
        EXPECT_EQ(file->reading, reading);
        EXPECT_EQ(textOf(file->content), name == "job" ? "content" : "");
        EXPECT_EQ(file->isLabelKnown, name == "job" || name == "out");
    }
    EXPECT_EQ(read("out")->linkTarget, elsewhere / "secret");
    EXPECT_EQ(read("job")->permissions, 0640U);
    EXPECT_FALSE(read("nothing"));
    fs::create_directory_symlink(folder.path(), elsewhere / "linked");
    EXPECT_TRUE(JobLink::readJobFile({.folder = folderURL(elsewhere / "linked"), .name = "job"}));
    EXPECT_FALSE(JobLink::readJobFile({.folder = folderURL(folder / "job"), .name = "job"}));
}

// The label that the agent compares with its exceptions, also of what is no job any more.
TEST_F(JobFileReading, FindsTheLabelOfTheAgentInBoundedTimeAndMemory) {
    const std::string beginning = "<plist><dict><key>Label</key><string>a.b</string>";
    writeFile(folder / "small", "{ Label = \"c.d\"; }");
    std::string comments;
    while (comments.size() <= JobLink::largestJob)
        comments += "<!-- " + std::string(1000, ' ') + " -->";
    writeFile(folder / "large", beginning + comments + "</dict></plist>");
    writeFile(folder / "sparse", "x");
    writeFile(folder / "sparseList", beginning + "<!--");
    for (const auto* const name : {"sparse", "sparseList"})
        fs::resize_file(folder / name, std::uintmax_t{3} << 30);

    struct Case {
        const char* name;
        const char* label;
        bool isKnown;
        JobFile::Reading reading;
    };

    for (const auto& [name, label, isKnown, reading] :
         {Case{"small", "c.d", true, JobFile::Reading::read},
          Case{"large", "a.b", true, JobFile::Reading::tooLarge},
          Case{"sparse", "sparse", true, JobFile::Reading::tooLarge},
          Case{"sparseList", "sparseList", true, JobFile::Reading::tooLarge}}) {
        SCOPED_TRACE(name);
        const auto file = read(name);
        ASSERT_TRUE(file);
        EXPECT_EQ(file->label, label);
        EXPECT_EQ(file->isLabelKnown, isKnown);
        EXPECT_EQ(file->reading, reading);
        EXPECT_LE(file->content.capacity(), 2 * JobLink::largestJob);
    }
}

} // namespace
