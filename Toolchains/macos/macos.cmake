# Builds for macOS 13 or later on Linux: zig compiles (its clang brings libc++ and the system's C
# headers), and the distribution's ld64.lld links, since zig's own linker turns weak imports into
# hard ones. One tree for each architecture: CORBEL_MACOS_ARCHITECTURE is arm64 or x86_64.
# Scripts/install-macos-toolchain puts everything in place.
set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_VERSION 22.0.0) # macOS 13
set(CORBEL_MACOS_ARCHITECTURE arm64 CACHE STRING "arm64 or x86_64")
set(CMAKE_SYSTEM_PROCESSOR ${CORBEL_MACOS_ARCHITECTURE})
set(CORBEL_TEXT_STUBS ${CMAKE_BINARY_DIR}/TextStubs CACHE PATH "What the frameworks export")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES CORBEL_MACOS_ARCHITECTURE CORBEL_TEXT_STUBS)

include(${CMAKE_CURRENT_LIST_DIR}/Installation.cmake)
corbel_find_runtime(${CORBEL_MACOS_ARCHITECTURE} runtime)

string(REPLACE arm64 aarch64 architecture ${CORBEL_MACOS_ARCHITECTURE})
foreach(language CXX OBJCXX)
    set(CMAKE_${language}_COMPILER ${CMAKE_CURRENT_LIST_DIR}/zig c++ -target ${architecture}-macos.13.0)
    # zig leaves out frame pointers when it optimises, and adds a trapping sanitizer when not.
    set(CMAKE_${language}_FLAGS_INIT "-fno-omit-frame-pointer -fno-sanitize=undefined -Wno-unused-command-line-argument")
endforeach()
# zig's own cache does not serve compilations that write dependencies; ccache does, once it is told
# what this compiler is, of which it sees the wrapper alone.
file(SHA256 ${CORBEL_TOOLCHAIN}/zig/.package identity)
set(CORBEL_CCACHE_SETTINGS env CCACHE_COMPILERTYPE=clang CCACHE_COMPILERCHECK=string:${identity})
# Only the back end may see a framework.
set(CMAKE_OBJCXX_STANDARD_INCLUDE_DIRECTORIES ${CMAKE_CURRENT_LIST_DIR}/stubsdk/include)

file(GLOB_RECURSE stub_headers CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/stubsdk/include/*.h)
if(NOT CMAKE_IN_TRY_COMPILE)
    execute_process(COMMAND python3 ${CMAKE_CURRENT_LIST_DIR}/text_stubs.py
                            ${CMAKE_CURRENT_LIST_DIR}/stubsdk/include ${CORBEL_TEXT_STUBS}
                    COMMAND_ERROR_IS_FATAL ANY)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS
                 ${stub_headers} ${CMAKE_CURRENT_LIST_DIR}/text_stubs.py)
endif()

# clang's driver arranges the command; -mlinker-version lets it speak to ld64.lld as to the original.
# The one exported symbol keeps the program's own libc++ apart from the system's.
find_program(CORBEL_LINK_DRIVER clang-14 REQUIRED)
find_program(CORBEL_LINKER ld64.lld-19 REQUIRED)
string(CONCAT link
    "${CORBEL_LINK_DRIVER} -target ${CORBEL_MACOS_ARCHITECTURE}-apple-macos13.0 "
    "--ld-path=${CORBEL_LINKER} -mlinker-version=705 -nostdlib -isysroot ${CORBEL_TEXT_STUBS} "
    "-Wl,-dead_strip,-adhoc_codesign,-exported_symbol,__mh_execute_header "
    "<CMAKE_CXX_LINK_FLAGS> <LINK_FLAGS> <OBJECTS> -o <TARGET> <LINK_LIBRARIES> "
    "${runtime}/libc++.a ${runtime}/libc++abi.a ${runtime}/libcompiler_rt.a ${CORBEL_TOOLCHAIN}/zig/lib/libc/darwin/libSystem.tbd")
set(CMAKE_CXX_LINK_EXECUTABLE "${link}")
set(CMAKE_OBJCXX_LINK_EXECUTABLE "${link}")

find_program(CMAKE_AR llvm-ar-14 REQUIRED)
find_program(CMAKE_RANLIB llvm-ranlib-14 REQUIRED)
find_program(CMAKE_INSTALL_NAME_TOOL llvm-install-name-tool-14 REQUIRED)
foreach(setting ARCHITECTURES SYSROOT DEPLOYMENT_TARGET) # all three are in the target's name
    set(CMAKE_OSX_${setting} "" CACHE STRING "" FORCE)
endforeach()
set(CMAKE_FIND_ROOT_PATH ${CORBEL_TEXT_STUBS})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
foreach(kind LIBRARY INCLUDE PACKAGE)
    set(CMAKE_FIND_ROOT_PATH_MODE_${kind} ONLY)
endforeach()
