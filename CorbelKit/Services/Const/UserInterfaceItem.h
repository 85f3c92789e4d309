#pragma once

#include "CorbelKit/Services/Const/Identifier.h"

// clang-format off: a table, one constant a line, in the order in which they are declared

/// Parts of views.
namespace CorbelKit::Const::UserInterfaceItem {
namespace Cell {
inline constexpr UserInterfaceItemIdentifier application{"ApplicationCell"};
inline constexpr UserInterfaceItemIdentifier data{"DataCell"};
inline constexpr UserInterfaceItemIdentifier entitlement{"EntitlementCell"};
inline constexpr UserInterfaceItemIdentifier header{"HeaderCell"};
inline constexpr UserInterfaceItemIdentifier findResult{"FindResultIdentifier"};
inline constexpr UserInterfaceItemIdentifier findResultGroup{"FindResultGroupIdentifier"};
} // namespace Cell

namespace Item {
inline constexpr UserInterfaceItemIdentifier children{"Children"};
inline constexpr UserInterfaceItemIdentifier group{"Group"};
inline constexpr UserInterfaceItemIdentifier groupHeader{"GroupHeader"};
inline constexpr UserInterfaceItemIdentifier header{"HeaderItem"};
inline constexpr UserInterfaceItemIdentifier item{"Item"};
inline constexpr UserInterfaceItemIdentifier lineNumber{"LineNumber"};
inline constexpr UserInterfaceItemIdentifier searchResult{"SearchResult"};
inline constexpr UserInterfaceItemIdentifier time{"Time"};
inline constexpr UserInterfaceItemIdentifier button{"Button"};
} // namespace Item

/// Of the list of jobs.
namespace Column {
inline constexpr UserInterfaceItemIdentifier commands{"Commands"};
inline constexpr UserInterfaceItemIdentifier date{"Date"};
inline constexpr UserInterfaceItemIdentifier enabled{"Enabled"};
inline constexpr UserInterfaceItemIdentifier folders{"Folders"};
inline constexpr UserInterfaceItemIdentifier keepAlive{"KeepAlive"};
inline constexpr UserInterfaceItemIdentifier kind{"Kind"};
inline constexpr UserInterfaceItemIdentifier limit{"Limit"};
inline constexpr UserInterfaceItemIdentifier message{"Message"};
inline constexpr UserInterfaceItemIdentifier name{"Name"};
inline constexpr UserInterfaceItemIdentifier notification{"Notification"};
inline constexpr UserInterfaceItemIdentifier position{"Position"};
inline constexpr UserInterfaceItemIdentifier prefix{"Prefix"};
inline constexpr UserInterfaceItemIdentifier schedule{"Schedule"};
inline constexpr UserInterfaceItemIdentifier snippets{"Snippets"};
inline constexpr UserInterfaceItemIdentifier status{"Status"};
inline constexpr UserInterfaceItemIdentifier string{"String"};
inline constexpr UserInterfaceItemIdentifier summary{"Summary"};
inline constexpr UserInterfaceItemIdentifier user{"User"};
inline constexpr UserInterfaceItemIdentifier value{"Value"};
} // namespace Column

/// Of the list of times at which jobs run.
namespace ScheduleColumn {
inline constexpr UserInterfaceItemIdentifier repeatInterval{"RepeatInterval"};
inline constexpr UserInterfaceItemIdentifier everyHour{"EveryHour"};
inline constexpr UserInterfaceItemIdentifier everyDay{"EveryDay"};
inline constexpr UserInterfaceItemIdentifier dayOfWeek{"DayOfWeek"};
inline constexpr UserInterfaceItemIdentifier dayOfMonth{"DayOfMonth"};
inline constexpr UserInterfaceItemIdentifier dayOfYear{"DayOfYear"};
} // namespace ScheduleColumn
} // namespace CorbelKit::Const::UserInterfaceItem

// clang-format on
