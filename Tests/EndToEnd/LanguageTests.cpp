// The agent as a process, in the user's language.

#include "Tools/AgentTrial.h"

#include <gtest/gtest.h>

#include <utility>

namespace {

using Tools::AgentTrial;
using Tools::jobFile;

std::optional<std::string> lineAfterSaving(AgentTrial& trial, std::string_view content) {
    trial.save(trial.userAgents() / "x.plist", content);
    auto line = trial.nextLine();
    return line ? std::optional(std::move(line->text)) : std::nullopt;
}

// Catches a table missing from the bundle, a neighbour's language, a word left in lower case.
TEST(Languages, ReportJobsInTheUsersWordsAndDirection) {
    const std::string path = "~/Library/LaunchAgents/x.plist";

    const struct {
        std::string locale, title, added, modified;
    } cases[] = {
        {"de_DE", "Vesper Pro hat eine Änderung bemerkt", "Neu: " + path, "Geändert: " + path},
        {"ja_JP", "Vesper Proが変更を検出しました", "新規: " + path, "変更済み: " + path},
        {"ar_EG", "لاحظ Vesper Pro تغييرًا", path + " :جديدة", path + " :معدّلة"},
        {"pt_BR", "O Vesper Pro detectou uma alteração", "Nova: " + path, "Modificada: " + path},
        {"pt_PT", "O Vesper Pro detetou uma alteração", "Nova: " + path, "Alterada: " + path},
        {"zh_TW", "Vesper Pro 發現一項更動", "新增: " + path, "已修改: " + path},
    };

    for (const auto& [locale, title, added, modified] : cases) {
        SCOPED_TRACE(locale);
        AgentTrial trial{CORBEL_AGENT};
        trial.environment["LC_ALL"] = locale + ".UTF-8";
        ASSERT_TRUE(trial.start());
        EXPECT_EQ(lineAfterSaving(trial, jobFile("org.example.x")), title + " \u2014 " + added);
        EXPECT_EQ(lineAfterSaving(trial, jobFile("org.example.x", "\n")),
                  title + " \u2014 " + modified);
    }
}

} // namespace
