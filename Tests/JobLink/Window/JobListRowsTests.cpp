// The rows of the list of all jobs, without a window.

#include "Tests/Support/Testing.h"
#include "Tools/JobLink/JobListRows.h"

#include <giomm/init.h>

namespace {

using namespace testing;
using JobLink::JobList;
using Paths = std::vector<std::string>;

TEST(RowsOfTheList, AreOneForEachJobHoweverManyComeAndGoAtOnce) {
    Gio::init();
    JobLink::JobListRows rows;
    const auto follow = [&](const Paths& stored, const Paths& removed) {
        JobList::Change change{.stored = {}, .removed = removed};
        for (const auto& path : stored)
            change.stored.emplace_back().path = path;
        rows.take(std::move(change));
        Paths seen;
        for (guint number = 0; number < rows.model()->get_n_items(); ++number)
            seen.push_back(rows.model()->get_item(number)->job().path);
        return seen;
    };
    for (const int count : {2, 20}) {
        Paths removed;
        for (int number = 0; number < count; ++number)
            removed.push_back("/" + std::to_string(number));
        follow({"/a"}, {});
        follow(removed, {});
        EXPECT_THAT(follow({"/a", "/b"}, removed), UnorderedElementsAre("/a", "/b")) << count;
        EXPECT_THAT(follow({}, {"/b"}), ElementsAre("/a")) << count;
    }
}

} // namespace
