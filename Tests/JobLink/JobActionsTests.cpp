// What a job's window changes for the user, in real files.

#include "CorbelKit/Services/Defaults.h"
#include "CorbelKit/Services/SharedSettings.h"
#include "Tests/Support/Testing.h"
#include "Tools/JobLink/Core/Exceptions.h"
#include "Tools/JobLink/Core/JobReport.h"
#include "Tools/JobLink/Core/TimedTool.h"

namespace {

using namespace TestSupport;
using JobLink::JobPlace;
using JobLink::OffSwitch;

class JobActions : public ::testing::Test {
protected:
    TemporaryFolder configuration;
    const EnvironmentVariable variable{"XDG_CONFIG_HOME", configuration.path().string()};
    const fs::path settings = configuration / "tarnwell" /
                              (std::string(CorbelKit::Defaults::suiteName(
                                   CorbelKit::Defaults::ApplicationGroup::mainApplication)) +
                               ".plist");
};

TEST_F(JobActions, ExceptAJobAndTakeThatBackBesideWhatElseIsKept) {
    namespace Exceptions = JobLink::Exceptions;
    fs::create_directories(settings.parent_path());
    const std::string others = "{ Exceptions = (a, b, a); ExcludePrefixes = (x); Other = 1; }";
    writeFile(settings, others);
    for (int time = 0; time < 2; ++time)
        EXPECT_FALSE(Exceptions::set("new", true));
    EXPECT_TRUE(Exceptions::contain("new"));
    EXPECT_THAT(CorbelKit::SharedSettings::readExceptions(),
                testing::ElementsAre("a", "b", "a", "new"));
    EXPECT_FALSE(Exceptions::set("new", false));
    EXPECT_THAT(CorbelKit::SharedSettings::readExceptions(), testing::ElementsAre("a", "b", "a"));
    EXPECT_THAT(CorbelKit::SharedSettings::readExcludePrefixes(), testing::ElementsAre("x"));
    // What is not understood is left as it is.
    for (const std::string kept : {"{ Exceptions = text; }", "{ Exceptions = (a, (b)); }"}) {
        writeFile(settings, kept);
        EXPECT_TRUE(Exceptions::set("new", true)) << kept;
        EXPECT_EQ(contentOf(settings), kept);
    }
    fs::remove_all(settings.parent_path());
    writeFile(settings.parent_path(), "no folder");
    EXPECT_TRUE(Exceptions::set("new", true));
}

/// The switch of the file's job as it is now.
OffSwitch switchOf(const fs::path& file) {
    const JobPlace place{.folder = folderURL(file.parent_path()), .name = file.filename()};
    const auto read = JobLink::readJobFile(place);
    return {place, JobLink::describeJob(place, read.value_or(JobLink::JobFile()))};
}

TEST_F(JobActions, TurnADesktopEntryOffForTheUserAloneAndOnAgainByteForByte) {
    TemporaryFolder system;
    const auto entry = system / "a.desktop";
    const auto own = configuration / "autostart/a.desktop";
    const std::string content =
        "# c\r\n[Desktop Entry]\r\nExec=a\r\n# d\rHidden=false\r\n[Other]\r\nHidden=no";
    writeFile(entry, content);
    auto first = switchOf(entry);
    EXPECT_FALSE(first.isOff());
    EXPECT_FALSE(first.turnOff());
    EXPECT_EQ(contentOf(entry), content);
    EXPECT_EQ(contentOf(own), content + "\n\n[Desktop Entry]\nHidden=true\n");
    EXPECT_TRUE(switchOf(entry).isOff());
    EXPECT_TRUE(switchOf(own).isOff());
    EXPECT_FALSE(first.turnOn());
    EXPECT_FALSE(fs::exists(own));
    EXPECT_TRUE(first.turnOn()); // nothing is left to take back

    writeFile(own, "[Desktop Entry]\nExec=mine");
    auto second = switchOf(entry);
    EXPECT_FALSE(second.turnOff());
    EXPECT_EQ(contentOf(own), "[Desktop Entry]\nHidden=true\nExec=mine\n");
    auto third = switchOf(own);
    EXPECT_FALSE(second.turnOn());
    EXPECT_EQ(contentOf(own), "[Desktop Entry]\nExec=mine");
    EXPECT_FALSE(third.turnOff());
    writeFile(own, "changed since");
    EXPECT_TRUE(third.turnOn());
    EXPECT_EQ(contentOf(own), "changed since");
}

TEST_F(JobActions, TurnNothingOffThroughALinkNorWhereNothingCanBeKept) {
    TemporaryFolder system;
    const auto entry = system / "a.desktop";
    const auto own = configuration / "autostart/a.desktop";
    writeFile(entry, "[Desktop Entry]\n");
    writeFile(system / "linked", "[Desktop Entry]\n");
    fs::create_directories(own.parent_path());
    fs::create_symlink(system / "linked", own);
    EXPECT_TRUE(switchOf(entry).turnOff());
    EXPECT_EQ(contentOf(system / "linked"), "[Desktop Entry]\n");
    fs::remove_all(own.parent_path());
    writeFile(own.parent_path(), "no folder");
    EXPECT_TRUE(switchOf(entry).turnOff());
    writeFile(entry, "no group");
    EXPECT_TRUE(switchOf(entry).turnOff());

    writeFile(system / "a.service", "[Service]\n");
    EXPECT_EQ(switchOf(system / "a.service").kind(), OffSwitch::Kind::none); // the system's own
    fs::create_directories(configuration / "systemd/user");
    writeFile(configuration / "systemd/user/a.service", "[Service]\n");
    fs::create_directories(configuration / "systemd/user/x.target.wants");
    fs::create_symlink("../a.service", configuration / "systemd/user/x.target.wants/a.service");
    const auto linked = JobLink::readJobReport(
        {.folder = folderURL(configuration / "systemd/user"), .name = "a.service"});
    EXPECT_EQ(linked.offSwitch.kind(), OffSwitch::Kind::none) << "who would link it again?";
    ASSERT_EQ(linked.description.starts.size(), 1U);
    EXPECT_EQ(linked.description.starts.front().detail, "x.target");
    writeFile(configuration / "systemd/user/b.service", "[Install]\nAlias=c.service\n");
    const auto unit = switchOf(configuration / "systemd/user/b.service");
    EXPECT_EQ(unit.kind(), OffSwitch::Kind::userUnit);
    fs::remove(configuration / "systemd/user/b.service");
    EXPECT_FALSE(unit.isOff()) << "systemctl does not know it";
}

TEST(InstalledPackage, IsThatOfThePathItselfWhateverItsCharacters) {
    if (!fs::exists("/usr/bin/dpkg-query"))
        GTEST_SKIP() << "no package system";
    EXPECT_EQ(JobLink::installedPackage("/usr/bin/env"), "coreutils");
    for (const auto* const path : {"/usr/bin/en?", "/usr/bin/*", "/usr/bin/[e]nv", "/usr/bin/env\\",
                                   "/nothing\ncoreutils: /usr/bin/env"})
        EXPECT_EQ(JobLink::installedPackage(path), "") << path;
}

} // namespace
