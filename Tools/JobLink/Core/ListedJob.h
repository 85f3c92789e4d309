#pragma once

#include <chrono>
#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace JobLink {

/// A job as the list shows it, in texts that are safe to show on one line each. A plain value.
struct ListedJob {
    /// What the user has not seen of it at the last look.
    enum class News : std::uint8_t { none, added, modified };

    std::string path;  ///< bytes, as the agent has it
    std::string name;  ///< its label, or the name of a file without one
    std::string place; ///< its path, with "~" for the user's home
    News news = News::none;
    std::string runs{};   ///< empty while it has not been looked at
    std::string starts{}; ///< likewise
    std::optional<std::chrono::sys_seconds> changed{};

    /// What is searched, and what the name is sorted by: all the texts in lower case.
    std::string sought{};
};

/// What the list can be sorted by.
enum class JobColumn : std::uint8_t { name, runs, starts, changed };

/// Jobs that are equivalent in the column come in the order of their names, then of their paths.
std::strong_ordering compareJobs(const ListedJob& first, const ListedJob& second, JobColumn column);

/// Finds jobs by words, each of which is somewhere in the job's texts, in whatever case.
class JobSearch {
public:
    explicit JobSearch(std::string_view words);

    bool finds(const ListedJob& job) const;

private:
    std::vector<std::string> words_;
};

} // namespace JobLink
