#pragma once

#include "Platform/PropertyList/Events.h"

#include <optional>
#include <string>
#include <string_view>

namespace Platform::PropertyLists {

bool isXMLSpace(char character);
bool isXMLSpace(std::string_view text);

/// The texts of the XML form's elements, without white space around them. Absent when they do not
/// say what their element demands.
std::optional<Scalar> integerFromXML(const std::string& text);
std::optional<Scalar> realFromXML(const std::string& text);
std::optional<Scalar> dateFromXML(const std::string& text);

/// Absent where four digits do not hold the year.
std::optional<std::string> xmlFromDate(PropertyList::Date date);

} // namespace Platform::PropertyLists
