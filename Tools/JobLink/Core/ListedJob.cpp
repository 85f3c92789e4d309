#include "Tools/JobLink/Core/ListedJob.h"

#include "Platform/TextServices.h"

#include <algorithm>
#include <compare>

namespace JobLink {
namespace {

std::strong_ordering compareInColumn(const ListedJob& first, const ListedJob& second,
                                     JobColumn column) {
    switch (column) {
    case JobColumn::runs:
        return first.runs <=> second.runs;
    case JobColumn::starts:
        return first.starts <=> second.starts;
    case JobColumn::changed:
        if (first.changed && second.changed) {
            return first.changed->time_since_epoch().count() <=>
                   second.changed->time_since_epoch().count();
        }
        return first.changed.has_value() <=> second.changed.has_value();
    case JobColumn::name:
        break;
    }
    return std::strong_ordering::equal;
}

} // namespace

std::strong_ordering compareJobs(const ListedJob& first, const ListedJob& second,
                                 JobColumn column) {
    if (const auto order = compareInColumn(first, second, column); std::is_neq(order))
        return order;
    if (const auto order = first.sought <=> second.sought; std::is_neq(order))
        return order;
    return first.path <=> second.path;
}

JobSearch::JobSearch(std::string_view words) {
    constexpr std::string_view blanks = " \t\n";
    const auto text = Platform::TextServices::lowercased(words);
    for (std::size_t begin = 0; begin < text.size();) {
        const auto end = std::min(text.find_first_of(blanks, begin), text.size());
        if (end > begin)
            words_.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
}

bool JobSearch::finds(const ListedJob& job) const {
    return std::ranges::all_of(words_, [&](const std::string& word) {
        return job.sought.find(word) != std::string::npos;
    });
}

} // namespace JobLink
