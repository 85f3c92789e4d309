#pragma once

#include "CorbelKit/Services/Const/Identifier.h"

// clang-format off: a table, one constant a line, in the order in which they are declared

/// Steps from one view to another.
namespace CorbelKit::Const::StoryboardSegue {
inline constexpr StoryboardSegueIdentifier backgroundItems{"BackgroundItemsSegue"};
inline constexpr StoryboardSegueIdentifier columns{"ColumnsSegue"};
inline constexpr StoryboardSegueIdentifier commandResult{"CommandResultSegue"};
inline constexpr StoryboardSegueIdentifier disabled{"DisabledSegue"};
inline constexpr StoryboardSegueIdentifier duplicate{"DuplicateSegue"};
inline constexpr StoryboardSegueIdentifier documentsPopover{"DocumentsPopoverSegue"};
inline constexpr StoryboardSegueIdentifier goToLine{"GoToLineSegue"};
inline constexpr StoryboardSegueIdentifier hex{"HexSegue"};
inline constexpr StoryboardSegueIdentifier import{"ImportSegue"};
inline constexpr StoryboardSegueIdentifier info{"InfoSegue"};
inline constexpr StoryboardSegueIdentifier infoAppService{"InfoAppServiceSegue"};
inline constexpr StoryboardSegueIdentifier infoCron{"InfoCronSegue"};
inline constexpr StoryboardSegueIdentifier infoFileJob{"InfoFileJobSegue"};
inline constexpr StoryboardSegueIdentifier infoLaunchd{"InfoLaunchdSegue"};
inline constexpr StoryboardSegueIdentifier infoLoginItem{"InfoLoginItemSegue"};
inline constexpr StoryboardSegueIdentifier infoStartupItem{"InfoStartupItemSegue"};
inline constexpr StoryboardSegueIdentifier infoPrivilegedHelperTool{"InfoPrivilegedHelperToolSegue"};
inline constexpr StoryboardSegueIdentifier infoUnreadable{"InfoUnreadableSegue"};
inline constexpr StoryboardSegueIdentifier language{"LanguageSegue"};
inline constexpr StoryboardSegueIdentifier loading{"LoadingSegue"};
inline constexpr StoryboardSegueIdentifier log{"LogSegue"};
inline constexpr StoryboardSegueIdentifier newItem{"NewSegue"};
inline constexpr StoryboardSegueIdentifier newPlist{"NewPlistSegue"};
inline constexpr StoryboardSegueIdentifier newScript{"NewScriptSegue"};
inline constexpr StoryboardSegueIdentifier plist{"PlistSegue"};
inline constexpr StoryboardSegueIdentifier power{"PowerSegue"};
inline constexpr StoryboardSegueIdentifier preview{"PreviewSegue"};
inline constexpr StoryboardSegueIdentifier quickLook{"QuickLookSegue"};
inline constexpr StoryboardSegueIdentifier scriptEdit{"ScriptEditSegue"};
inline constexpr StoryboardSegueIdentifier smartFolders{"SmartFoldersSegue"};
inline constexpr StoryboardSegueIdentifier stringPreviewText{"StringPreviewTextSegue"};
inline constexpr StoryboardSegueIdentifier test{"TestSegue"};
inline constexpr StoryboardSegueIdentifier textScanner{"TextScannerSegue"};
} // namespace CorbelKit::Const::StoryboardSegue

// clang-format on
