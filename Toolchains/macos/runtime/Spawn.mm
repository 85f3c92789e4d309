// The last step of the flag in include/spawn.h. The linker leads calls of posix_spawn here.
#include <spawn.h>
#include <unistd.h>

extern "C" {

int __real_posix_spawn(pid_t* child, const char* path, const posix_spawn_file_actions_t* actions,
                       const posix_spawnattr_t* attributes, char* const arguments[],
                       char* const environment[]);

int __wrap_posix_spawn(pid_t* child, const char* path, const posix_spawn_file_actions_t* actions,
                       const posix_spawnattr_t* attributes, char* const arguments[],
                       char* const environment[]) {
    if (attributes != nullptr && attributes->__pad[15] == POSIX_SPAWN_CLOEXEC_DEFAULT)
        posix_spawn_file_actions_addclosefrom_np(const_cast<posix_spawn_file_actions_t*>(actions),
                                                 STDERR_FILENO + 1);
    return __real_posix_spawn(child, path, actions, attributes, arguments, environment);
}

} // extern "C"
