#include "Vesper_Pro_Agent/ChangePosting.h"

#include <gtest/gtest.h>

using namespace Vesper_Pro_Agent;
using enum Vesper_Pro_Agent::ChangeKind;
using Platform::LayoutDirection;

TEST(ChangePosting, ReportsOnlyWhatTheUserWants) {
    const ChangeFilter filter({"org.former", "known.plist"},
                              {"com.example.longer", "COM.Example", "", "\u00C9diteur."});

    const std::tuple<const char*, JobChange, bool> cases[] = {
        {"the maker's own", {"/f/x.plist", added, "com.tarnwell.updater"}, false},
        {"the maker's prefix in another case", {"/f/x.plist", added, "Com.tarnwell.x"}, true},
        {"a prefix beyond ASCII", {"/f/x.plist", added, "\u00E9diteur.agent"}, false},
        {"no label: the file's name and the prefix",
         {"/f/com.example.x", added, std::nullopt},
         false},
        {"behind a longer prefix", {"/f/x.plist", added, "com.example.z"}, false},
        {"a prefix that is not at the start", {"/f/x.plist", added, "my.com.example"}, true},
        {"a label hides the file's name", {"/f/known.plist", added, "org.stranger"}, true},
        {"an empty label is a label", {"/f/known.plist", added, ""}, true},
        {"deleted: the file's name", {"/f/known.plist", deleted, "org.stranger"}, false},
        {"deleted: the former label", {"/f/x.plist", deleted, "org.former"}, false},
        {"deleted: no prefix of the former label", {"/f/x.plist", deleted, "com.example.x"}, true},
    };
    for (const auto& [claim, change, isExpected] : cases)
        EXPECT_EQ(isReported(change, filter), isExpected) << claim;
    EXPECT_TRUE(isReported({"/f/x", added, "any"}, {}));
}

TEST(ChangePosting, SaysWhatChangedAndWhere) {
    const auto english = [](std::string_view key) { return std::string(key); };
    const ChangeWording leftToRight{"/home/ann", LayoutDirection::leftToRight, english};
    const ChangeWording rightToLeft{"/home/ann", LayoutDirection::rightToLeft, english};
    const ChangeWording rootless{"/", LayoutDirection::leftToRight, english};
    const std::string path = "/home/ann/Agents/x";

    const std::tuple<const ChangeWording&, JobChange, const char*, std::string> cases[] = {
        {leftToRight, {path, added, {}}, "New: ~/Agents/x", path},
        {leftToRight, {path, modified, {}}, "Modified: ~/Agents/x", path},
        {leftToRight, {path, deleted, {}}, "Deleted: ~/Agents/x", ""},
        {rightToLeft, {path, added, {}}, "~/Agents/x :New", path},
        {leftToRight, {"/Library/x", added, {}}, "New: /Library/x", "/Library/x"},
        {leftToRight, {"/a/home/ann/home/ann", added, {}}, "New: /a~~", "/a/home/ann/home/ann"},
        {rootless, {"/Library/x", added, {}}, "New: /Library/x", "/Library/x"},
    };
    for (const auto& [wording, change, body, identifier] : cases) {
        const auto notification = describe(change, wording);
        EXPECT_EQ(notification.title, "Vesper Pro noticed a change");
        EXPECT_EQ(notification.body, body);
        EXPECT_EQ(notification.identifier, identifier);
    }
}
