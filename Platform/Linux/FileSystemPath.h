#pragma once

#include "Platform/POSIX/FileSystemPath.h"
