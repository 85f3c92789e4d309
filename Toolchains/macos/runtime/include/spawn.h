#pragma once
#include_next <spawn.h>

// "Any file descriptors that are not explicitly created by the file actions are closed":
// posix_spawnattr_setflags(3) of macOS. This machine has an action for that and no flag, so the flag is noted
// in what the C library leaves free, and Spawn.mm adds the action.
#define POSIX_SPAWN_CLOEXEC_DEFAULT 0x4000

inline int corbelSetSpawnFlags(posix_spawnattr_t* attributes, short flags) {
    attributes->__pad[15] = flags & POSIX_SPAWN_CLOEXEC_DEFAULT;
    return posix_spawnattr_setflags(attributes,
                                    static_cast<short>(flags & ~POSIX_SPAWN_CLOEXEC_DEFAULT));
}
#define posix_spawnattr_setflags(attributes, flags) corbelSetSpawnFlags(attributes, flags)
