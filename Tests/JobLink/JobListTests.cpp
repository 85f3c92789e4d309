// The list of all jobs, over real folders and settings.

#include "CorbelKit/Services/Defaults.h"
#include "CorbelKit/Services/SharedSettings.h"
#include "Tests/Support/EnvironmentVariable.h"
#include "Tests/Support/MainLoop.h"
#include "Tests/Support/Testing.h"
#include "Tests/Support/WaitUntil.h"
#include "Tools/JobLink/Core/Exceptions.h"
#include "Tools/JobLink/Core/JobList.h"
#include "Tools/JobLink/Core/SettingList.h"

#include <sys/stat.h>

#include <compare>
#include <map>

namespace {

using namespace TestSupport;
using namespace testing;
using JobLink::JobColumn;
using JobLink::JobList;
using JobLink::ListedJob;
using News = ListedJob::News;

bool comesTrue(const std::function<bool()>& condition) {
    return waitUntil([&] {
        drainMainLoop();
        return condition();
    });
}

/// What a user has on the screen.
class Look {
public:
    explicit Look(const fs::path& folder)
        : list_(JobList::make({folderURL(folder)}, [this](const JobList::Change& change) {
            for (const auto& job : change.stored)
                jobs.insert_or_assign(job.name, job);
            for (const auto& path : change.removed)
                std::erase_if(jobs, [&](const auto& job) { return job.second.path == path; });
            isComplete = change.isComplete;
        })) {
        EXPECT_TRUE(comesTrue([this] { return isComplete; }));
    }

    std::string runs(const std::string& name) const {
        const auto found = jobs.find(name);
        return found == jobs.end() ? "no such job" : found->second.runs;
    }

    std::map<std::string, News> news() const {
        std::map<std::string, News> found;
        for (const auto& [name, job] : jobs)
            found.emplace(name, job.news);
        return found;
    }

    std::map<std::string, ListedJob> jobs;
    bool isComplete = false;

private:
    std::shared_ptr<JobList> list_;
};

class ListOfJobs : public Test {
protected:
    TemporaryFolder configuration;
    const EnvironmentVariable variable{"XDG_CONFIG_HOME", configuration.path().string()};
    TemporaryFolder folder;
};

TEST_F(ListOfJobs, HasWhatTheAgentCountsAsOneAndFollowsIt) {
    writeFile(folder / "a.desktop", "[Desktop Entry]\nExec=run --it\n");
    writeFile(folder / "b.plist", "{ Label = \"org.example\"; Program = \"/p\"; }");
    writeFile(folder / "hostile\n\xff", "");
    writeFile(folder / ".DS_Store", "");
    fs::create_directory(folder / "subfolder");
    fs::create_symlink("a.desktop", folder / "link");
    fs::create_symlink("nowhere", folder / "loose");
    mkfifo((folder / "pipe").c_str(), S_IRUSR | S_IWUSR);
    Look look(folder.path());
    EXPECT_THAT(look.jobs, UnorderedElementsAre(Key("a.desktop"), Key("org.example"), Key("link"),
                                                Key("hostile\\n\uFFFD")));
    EXPECT_EQ(look.runs("a.desktop"), "run --it");
    EXPECT_EQ(look.runs("org.example"), "/p");
    EXPECT_EQ(look.runs("link"), "\u2192 a.desktop");

    replaceFile(folder / "a.desktop", "[Desktop Entry]\nExec=other\n");
    fs::remove(folder / "link");
    EXPECT_TRUE(comesTrue(
        [&] { return look.runs("a.desktop") == "other" && !look.jobs.contains("link"); }));
}

TEST_F(ListOfJobs, MarksWhatCameAndChangedSinceTheLastLookUntilTheNext) {
    writeFile(folder / "a", "1");
    writeFile(folder / "b", "1");
    {
        Look first(folder.path());
        EXPECT_THAT(first.news(), ElementsAre(Pair("a", News::none), Pair("b", News::none)));
        writeFile(folder / "c", "1");
        EXPECT_TRUE(comesTrue([&] { return first.isComplete && first.jobs.contains("c"); }));
        EXPECT_EQ(first.jobs["c"].news, News::added);
    }
    replaceFile(folder / "a", "2");
    writeFile(folder / "d", "1");
    EXPECT_THAT(Look(folder.path()).news(),
                ElementsAre(Pair("a", News::modified), Pair("b", News::none), Pair("c", News::none),
                            Pair("d", News::added)));
    EXPECT_THAT(Look(folder.path()).news(), Each(Pair(_, News::none)));
}

TEST(ListedJobs, AreFoundByEachWordAndSortedByEachColumn) {
    const auto job = [](const std::string& name, const std::string& runs, int seconds) {
        return ListedJob{.path = "/" + name,
                         .name = name,
                         .place = "/" + name,
                         .runs = runs,
                         .changed = std::chrono::sys_seconds(std::chrono::seconds(seconds)),
                         .sought = name + "\n" + runs};
    };
    const auto first = job("ärger", "zip", 2);
    const auto second = job("b", "tar", 2);
    for (const auto& [words, isFound] : std::map<std::string, bool>{
             {"", true}, {" ÄRG\tZi ", true}, {"zip tar", false}, {"ärgerzip", false}})
        EXPECT_EQ(JobLink::JobSearch(words).finds(first), isFound) << words;
    EXPECT_TRUE(std::is_gt(compareJobs(first, second, JobColumn::name)));
    EXPECT_TRUE(std::is_gt(compareJobs(first, second, JobColumn::runs)));
    EXPECT_TRUE(std::is_gt(compareJobs(first, second, JobColumn::changed))); // by name, then
    EXPECT_TRUE(std::is_lt(compareJobs(job("z", "", 1), second, JobColumn::changed)));
}

TEST_F(ListOfJobs, HasTheAgentsSilenceListsAsAnybodyMakesThem) {
    std::vector<std::string> seen{"not read"};
    const auto list = JobLink::SettingList::make(CorbelKit::Defaults::excludePrefixes,
                                                 [&](const auto& texts) { seen = texts; });
    EXPECT_TRUE(comesTrue([&] { return seen.empty(); }));
    std::optional<bool> isSaved;
    list->set("com.example.", true, [&](const auto& failure) { isSaved = !failure; });
    EXPECT_TRUE(comesTrue([&] { return isSaved && seen.size() == 1; }));
    EXPECT_THAT(CorbelKit::SharedSettings::readExcludePrefixes(), ElementsAre("com.example."));
    EXPECT_FALSE(JobLink::Exceptions::setListed(CorbelKit::Defaults::excludePrefixes, "x", true));
    EXPECT_TRUE(comesTrue([&] { return seen.size() == 2; }));
    list->set("com.example.", false, [&](const auto& failure) { isSaved = !failure; });
    EXPECT_TRUE(comesTrue([&] { return seen == std::vector<std::string>{"x"}; }));
    EXPECT_TRUE(*isSaved);
}

} // namespace
