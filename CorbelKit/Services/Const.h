#pragma once

// clang-format off: in the order in which the groups are declared

#include "CorbelKit/Services/Const/Key.h"
#include "CorbelKit/Services/Const/PathComponent.h"
#include "CorbelKit/Services/Const/UniChar.h"
#include "CorbelKit/Services/Const/Pasteboard.h"
#include "CorbelKit/Services/Const/Codesign.h"
#include "CorbelKit/Services/Const/Miscellaneous.h"
#include "CorbelKit/Services/Const/Restore.h"
#include "CorbelKit/Services/Const/App.h"
#include "CorbelKit/Services/Const/FileName.h"
#include "CorbelKit/Services/Const/Command.h"
#include "CorbelKit/Services/Const/Identifier.h"
#include "CorbelKit/Services/Const/Notification.h"
#include "CorbelKit/Services/Const/Window.h"
#include "CorbelKit/Services/Const/TouchBar.h"
#include "CorbelKit/Services/Const/StoryboardSegue.h"
#include "CorbelKit/Services/Const/UserInterfaceItem.h"

// clang-format on

/// The fixed names that the maker's applications share, each in one place.
namespace CorbelKit::Const {}
