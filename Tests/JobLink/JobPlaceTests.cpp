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

    const std::string folder = "/etc/xdg/autostart/";
    const auto placeOf = [&](const std::string& link) {
        const auto path = JobLink::pathInLink(link);
        const auto place = path ? JobLink::jobPlace(*path, folders) : std::nullopt;
        EXPECT_TRUE(!place || place->path() == *path);
        return place ? place->name : "";
    };
    // A name is bytes; and this one has "/" and "+" in its Base64.
    for (const std::string name : {"a.desktop", "\xFF~?", ".hidden"})
        EXPECT_EQ(placeOf(linkTo(folder + name)), name);
    EXPECT_EQ(placeOf(linkTo("/root/.config/autostart/b")), "b");
    const std::string spelling = "L2V0Yy94ZGcvYXV0b3N0YXJ0L2E=";
    EXPECT_EQ(placeOf("vesperpro10joburl://" + spelling), "a");
    for (const auto& path :
         {"/etc/passwd"s, "/etc/xdg/autostart"s, folder, folder + ".", folder + "..",
          folder + "../passwd", "/etc/xdg/../xdg/autostart/a"s, "/etc/xdg//autostart/a"s,
          folder + "/a", folder + "sub/a", "autostart/a"s, "a"s, folder + "a\0.desktop"s,
          folder + std::string(5000, 'a')})
        EXPECT_EQ(placeOf(linkTo(path)), "") << path.substr(0, 100);
    // Also with a space, unpadded, and with stray bits.
    for (const auto& link :
         {"vesperpro10joburl://" + std::string(20'000'000, 'A'), linkTo(folder + "a") + "\n",
          linkTo(folder + "a") + "/", " " + linkTo(folder + "a"),
          "vesperpro10joburl://L2V0 Yy94ZGcvYXV0b3N0YXJ0L2E="s,
          "vesperpro10joburl://L2V0Yy94ZGcvYXV0b3N0YXJ0L2E"s,
          "vesperpro10joburl://L2V0Yy94ZGcvYXV0b3N0YXJ0L2F="s, "vesperpro10joburl://"s,
          "vesperpro10joburl:" + spelling, "VESPERPRO10JOBURL://" + spelling,
          "file:///etc/xdg/autostart/a"s, ""s})
        EXPECT_EQ(placeOf(link), "") << link.substr(0, 100);
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
        JobFile::Reading reading;
    };

    for (const auto& [name, label, reading] :
         {Case{"small", "c.d", JobFile::Reading::read},
          Case{"large", "a.b", JobFile::Reading::tooLarge},
          Case{"sparse", "sparse", JobFile::Reading::tooLarge},
          Case{"sparseList", "sparseList", JobFile::Reading::tooLarge}}) {
        SCOPED_TRACE(name);
        const auto file = read(name);
        ASSERT_TRUE(file);
        EXPECT_EQ(file->label, label);
        EXPECT_TRUE(file->isLabelKnown);
        EXPECT_EQ(file->reading, reading);
        EXPECT_LE(file->content.capacity(), 2 * JobLink::largestJob);
    }
}

} // namespace
