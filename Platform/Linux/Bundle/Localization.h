#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Platform {

/// The localisations that a bundle holds, by the names of their folders ("pt-BR", "zh_TW").
class Localizations {
public:
    explicit Localizations(std::vector<std::string> names);

    /// The name of the one that suits a language best, given by its BCP 47 tag (underscores count
    /// as hyphens): the language as it is spoken there, then as it is written there, then the
    /// language at all. Absent when there is none.
    std::optional<std::string> best(std::string_view languageTag) const;

private:
    std::vector<std::string> names_;
};

} // namespace Platform
