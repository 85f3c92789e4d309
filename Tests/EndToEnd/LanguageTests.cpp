// The agent as a process, in the user's language.

#include "Tests/Support/Linux/AgentTrial.h"

#include <gtest/gtest.h>

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
        TestSupport::AgentTrial trial{CORBEL_AGENT};
        trial.environment["LC_ALL"] = locale + ".UTF-8";
        ASSERT_TRUE(trial.start());
        for (const auto& change : {added, modified}) {
            trial.save(trial.userAgents() / "x.plist", change);
            const auto line = trial.nextLine();
            ASSERT_TRUE(line) << change;
            EXPECT_EQ(line->text, title + " \u2014 " + change);
        }
    }
}
