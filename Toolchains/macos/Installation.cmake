# Where Scripts/install-macos-toolchain puts things.
if(NOT "$ENV{XDG_CACHE_HOME}" STREQUAL "")
    set(CORBEL_TOOLCHAIN $ENV{XDG_CACHE_HOME}/corbel-macos)
else()
    set(CORBEL_TOOLCHAIN $ENV{HOME}/.cache/corbel-macos)
endif()

# corbel_find_runtime(<name> <variable>): the folder with libc++ for a target.
function(corbel_find_runtime name variable)
    if(NOT EXISTS ${CORBEL_TOOLCHAIN}/runtime-${name})
        message(FATAL_ERROR "The macOS toolchain is not there: run Scripts/install-macos-toolchain first")
    endif()
    set(${variable} ${CORBEL_TOOLCHAIN}/runtime-${name} PARENT_SCOPE)
endfunction()
