#include "Platform/TextServices.h"
#include "Tests/Support/Testing.h"

#include <list>

using namespace Platform::TextServices;
using TestSupport::EnvironmentVariable;

namespace {

using Variables = std::map<std::string, std::string>;

/// Sets the variables that hold the user's languages; those not given are not set.
std::list<EnvironmentVariable> environment(const Variables& variables) {
    std::list<EnvironmentVariable> set;
    for (const auto* name : {"LANGUAGE", "LC_ALL", "LC_MESSAGES", "LANG"}) {
        const auto found = variables.find(name);
        set.emplace_back(name,
                         found != variables.end() ? std::optional(found->second) : std::nullopt);
    }
    return set;
}

} // namespace

TEST(TextServices, ReadsThePreferredLanguagesAsMessageCataloguesAreChosen) {
    const std::pair<Variables, std::vector<std::string>> cases[] = {
        {{}, {"en"}},
        {{{"LANGUAGE", "de"}, {"LANG", "POSIX"}}, {"en"}},
        {{{"LANG", "pt_BR.UTF-8@x"}}, {"pt-BR"}},
        {{{"LANG", "sr_RS.UTF-8@latin"}}, {"sr-Latn-RS"}},
        {{{"LC_ALL", ""}, {"LC_MESSAGES", "fr_FR"}, {"LANG", "de_DE"}}, {"fr-FR"}},
        {{{"LC_ALL", "it_IT"}, {"LC_MESSAGES", "fr_FR"}, {"LANG", "de_DE"}}, {"it-IT"}},
        {{{"LC_ALL", "C"}, {"LANG", "de_DE"}}, {"en"}},
        {{{"LANGUAGE", "pt_BR:pt:en"}, {"LANG", "de_DE"}}, {"pt-BR", "pt", "en", "de-DE"}},
        {{{"LANGUAGE", "de_DE::fr"}, {"LANG", "de_DE"}}, {"de-DE", "fr"}},
        {{{"LANGUAGE", ":../..:e:%n:%s/:@latin:en_"}, {"LANG", "\xFF"}}, {"en"}},
    };
    for (const auto& [variables, expected] : cases) {
        const auto user = environment(variables);
        EXPECT_THAT(preferredLanguages(), testing::ElementsAreArray(expected));
    }
}

TEST(TextServices, CapitalizesWordsByTheRulesOfTheUsersLanguage) {
    const std::tuple<std::string, std::string, std::string> cases[] = {
        {"fr_FR", "élément modifié", "Élément Modifié"},
        {"nl_NL", "ijs", "IJs"},
        {"tr_TR", "isim", "İsim"},
    };
    for (const auto& [language, text, expected] : cases) {
        const auto user = environment({{"LANG", language}});
        EXPECT_EQ(capitalized(text), expected) << language;
    }
}

TEST(TextServices, NamesEveryEncodingDifferentlyInTheUsersLanguage) {
    const auto user = environment({{"LANG", "de_DE"}});
    std::set<std::string> names{""};
    for (const auto encoding : availableStringEncodings())
        EXPECT_TRUE(names.insert(localizedName(encoding)).second) << encoding;
    EXPECT_EQ(localizedName(11), "Kyrillisch (Windows)");
    EXPECT_EQ(localizedName(0), "");
}
