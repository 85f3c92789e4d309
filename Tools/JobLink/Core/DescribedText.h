#pragma once

#include "Tools/JobLink/Core/JobDescription.h"

#include <string>
#include <string_view>

namespace JobLink {

/// Bytes of a job file as text that is safe to show, cut where it is long.
std::string describedText(std::string_view bytes);

/// Without blanks around it.
std::string_view trimmed(std::string_view text);

/// Up to the first of the separators, which both go from the text.
std::string_view takeUntil(std::string_view& text, std::string_view separators);

/// @{
/// Adds to the description, as long as there is room; else, once, that there is more.
void addRun(JobDescription& description, std::string_view command);
void addStart(JobDescription& description, JobStart::Kind kind, std::string_view detail = {});
/// @}

} // namespace JobLink
