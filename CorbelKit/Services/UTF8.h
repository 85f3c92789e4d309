#pragma once

#include "Platform/UTF8.h"

namespace CorbelKit {

namespace UTF8 = Platform::UTF8;

} // namespace CorbelKit
