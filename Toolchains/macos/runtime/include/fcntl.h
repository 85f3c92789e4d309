#pragma once
#include_next <fcntl.h>

// For the sake of its events alone: open(2) of macOS. A file that may not be read can be opened so.
#define O_EVTONLY O_PATH
