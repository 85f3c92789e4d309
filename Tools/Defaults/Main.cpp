// Reads and edits the settings of programs, from a terminal or a script.

#include "Platform/Linux/Public/SettingsDomains.h"
#include "Platform/PrintableText.h"
#include "Tools/Defaults/NewValue.h"
#include "Tools/Defaults/ValueText.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace {

using Platform::Error;
using Platform::PropertyList;
namespace SettingsDomains = Platform::SettingsDomains;

using Words = std::span<const std::string_view>;

constexpr int usageFailure = 2; // as of getopt programs

constexpr const char* usage =
    R"(corbel-defaults: reads and edits the settings of programs

  corbel-defaults domains               the domains that have settings
  corbel-defaults keys DOMAIN           their keys, one a line
  corbel-defaults read DOMAIN [KEY]     all values, or one
  corbel-defaults write DOMAIN KEY VALUE
                                        stores a text, or as an option says:
      -string TEXT                      a text, whatever it begins with
      -int NUMBER
      -bool yes|no|true|false|1|0
      -array [TEXT...]                  a list of texts
      -array-add TEXT...                adds to the list
  corbel-defaults delete DOMAIN [KEY]   removes all values, or one
  corbel-defaults --help, --version

A domain is a file in $XDG_CONFIG_HOME/tarnwell (~/.config/tarnwell). Programs that
run follow a change at once. The exit code is 1 where there is no such domain or key or
the settings cannot be read or written, 2 where the command is not understood.
)";

std::string shown(std::string_view text) {
    return printableText(text, Platform::ActingCharacters::escaped);
}

int fail(const std::string& reason, int code = EXIT_FAILURE) {
    std::fputs(("corbel-defaults: " + shown(reason) + '\n').c_str(), stderr);
    return code;
}

int failUsage(const std::string& reason) {
    return fail(reason + " (corbel-defaults --help)", usageFailure);
}

/// A full disk or a reader that has gone is a failure, too.
int print(const std::string& text) {
    const bool isWritten = std::fputs(text.c_str(), stdout) >= 0 && std::fflush(stdout) == 0;
    return isWritten ? EXIT_SUCCESS : fail("the output cannot be written");
}

int failAbsence(std::string_view domain) {
    return fail("there is no domain " + std::string(domain));
}

int failAbsence(std::string_view domain, std::string_view key) {
    return fail("the domain " + std::string(domain) + " has no key " + std::string(key));
}

int printDomains(Words /*words*/) {
    std::string lines;
    for (const auto& domain : SettingsDomains::list())
        lines += shown(domain) + '\n';
    return print(lines);
}

int withValues(std::string_view domain, const auto& use) {
    const auto values = SettingsDomains::read(domain);
    if (!values)
        return fail(values.error().description);
    const auto& stored = *values;
    return stored ? use(*stored) : failAbsence(domain);
}

int printKeys(Words words) {
    return withValues(words[0], [](const PropertyList::Dictionary& values) {
        std::string lines;
        for (const auto& [key, value] : values)
            lines += shown(key) + '\n';
        return print(lines);
    });
}

int printValues(Words words) {
    return withValues(words[0], [&](const PropertyList::Dictionary& values) {
        if (words.size() == 1)
            return print(Defaults::valueText(values) + '\n');
        const auto found = values.find(words[1]);
        return found == values.end() ? failAbsence(words[0], words[1])
                                     : print(Defaults::valueText(found->second) + '\n');
    });
}

int writeValue(Words words) {
    const auto value = Defaults::NewValue::parse(words.subspan(2));
    if (!value)
        return failUsage(value.error().description);
    const auto failure = SettingsDomains::change(
        words[0], [&](PropertyList::Dictionary& values) { return value->store(values, words[1]); });
    return failure ? fail(failure->description) : EXIT_SUCCESS;
}

int deleteDomain(std::string_view domain) {
    const auto wasThere = SettingsDomains::remove(domain);
    if (!wasThere)
        return fail(wasThere.error().description);
    return *wasThere ? EXIT_SUCCESS : failAbsence(domain);
}

int deleteValues(Words words) {
    if (words.size() == 1)
        return deleteDomain(words[0]);
    return withValues(words[0], [&](const PropertyList::Dictionary& stored) {
        if (!stored.contains(words[1]))
            return failAbsence(words[0], words[1]);
        const auto failure =
            SettingsDomains::change(words[0], [&](PropertyList::Dictionary& values) {
                if (const auto found = values.find(words[1]); found != values.end())
                    values.erase(found);
                return std::optional<Error>();
            });
        return failure ? fail(failure->description) : EXIT_SUCCESS;
    });
}

struct Command {
    std::string_view name;
    std::size_t fewestWords;
    std::size_t mostWords;
    int (*run)(Words words);
};

constexpr auto anyNumber = std::numeric_limits<std::size_t>::max();
constexpr std::array commands = {
    Command{.name = "domains", .fewestWords = 0, .mostWords = 0, .run = printDomains},
    Command{.name = "keys", .fewestWords = 1, .mostWords = 1, .run = printKeys},
    Command{.name = "read", .fewestWords = 1, .mostWords = 2, .run = printValues},
    Command{.name = "write", .fewestWords = 3, .mostWords = anyNumber, .run = writeValue},
    Command{.name = "delete", .fewestWords = 1, .mostWords = 2, .run = deleteValues},
};

int run(Words words) {
    if (words.empty()) {
        std::fputs(usage, stderr);
        return usageFailure;
    }
    if (words[0] == "--help")
        return print(usage);
    if (words[0] == "--version")
        return print("corbel-defaults " CORBEL_VERSION "\n");
    const auto* const command = std::ranges::find(commands, words[0], &Command::name);
    if (command == commands.end())
        return failUsage("there is no command " + std::string(words[0]));
    const auto rest = words.subspan(1);
    if (rest.size() < command->fewestWords)
        return failUsage(std::string(words[0]) + " takes more words");
    if (rest.size() > command->mostWords)
        return failUsage(std::string(words[0]) + " takes fewer words");
    return command->run(rest);
}

} // namespace

int main(int argumentCount, char** arguments) {
    std::signal(SIGXFSZ, SIG_IGN); // a file as large as it may be is a failed write
    const std::vector<std::string_view> words(arguments + std::min(argumentCount, 1),
                                              arguments + argumentCount);
    return run(words);
}
