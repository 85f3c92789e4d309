#pragma once

#include "CorbelKit/Services/Const/Identifier.h"

// clang-format off: a table, one constant a line, in the order in which they are declared

/// Touch bars, by application, and what stands in them.
namespace CorbelKit::Const::TouchBar {
namespace Domain {
inline constexpr TouchBarDomain textEditor{"com.tarnwell.Brindle10"};
inline constexpr TouchBarDomain olderMainApplication{"com.tarnwell.VesperX5"};
inline constexpr TouchBarDomain pebblit{"com.tarnwell.Pebblit"};
inline constexpr TouchBarDomain kit{"com.tarnwell.CorbelKit"};
} // namespace Domain

namespace TextEditor {
inline constexpr TouchBarIdentifier document{"com.tarnwell.Brindle10.documentTouchBar"};
inline constexpr TouchBarIdentifier find{"com.tarnwell.Brindle10.findTouchBar"};
inline constexpr TouchBarIdentifier preferences{"com.tarnwell.Brindle10.preferencesTouchBar"};
} // namespace TextEditor

namespace OlderMainApplication {
inline constexpr TouchBarIdentifier main{"com.tarnwell.VesperX5.mainTouchBar"};
inline constexpr TouchBarIdentifier newJob{"com.tarnwell.VesperX5.newTouchBar"};
inline constexpr TouchBarIdentifier preferences{"com.tarnwell.VesperX5.preferencesTouchBar"};
} // namespace OlderMainApplication

namespace Pebblit {
inline constexpr TouchBarIdentifier main{"com.tarnwell.Pebblit.mainTouchBar"};
inline constexpr TouchBarIdentifier sidebar{"com.tarnwell.Pebblit.sidebarTouchBar"};
inline constexpr TouchBarIdentifier mode{"com.tarnwell.Pebblit.modeTouchBar"};
} // namespace Pebblit

namespace Kit {
inline constexpr TouchBarIdentifier preferences{"com.tarnwell.CorbelKit.preferencesTouchBar"};
} // namespace Kit

namespace Item {
inline constexpr TouchBarItemIdentifier document{"com.tarnwell.Brindle10.document"};
inline constexpr TouchBarItemIdentifier documentShare{"com.tarnwell.Brindle10.document.share"};
inline constexpr TouchBarItemIdentifier find{"com.tarnwell.Brindle10.find"};
inline constexpr TouchBarItemIdentifier findFind{"com.tarnwell.Brindle10.find.find"};
inline constexpr TouchBarItemIdentifier findFindScope{"com.tarnwell.Brindle10.find.find.scope"};
inline constexpr TouchBarItemIdentifier findFindSidebar{"com.tarnwell.Brindle10.find.find.sidebar"};
inline constexpr TouchBarItemIdentifier pebblitMain{"com.tarnwell.Pebblit.main"};
inline constexpr TouchBarItemIdentifier pebblitMode{"com.tarnwell.Pebblit.main.mode"};
inline constexpr TouchBarItemIdentifier preferences{"com.tarnwell.CorbelKit.preferences"};
inline constexpr TouchBarItemIdentifier preferencesTab{"com.tarnwell.CorbelKit.preferences.tab"};
} // namespace Item
} // namespace CorbelKit::Const::TouchBar

// clang-format on
