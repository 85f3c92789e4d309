// This machine's libdispatch, for what is made of it.
#pragma once
#include_next <dispatch/dispatch.h>
