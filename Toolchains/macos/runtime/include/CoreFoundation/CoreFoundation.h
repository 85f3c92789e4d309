#pragma once
#include "../../../stubsdk/include/CoreFoundation/CoreFoundation.h"
