# Options for every target of this tree.
include(CheckPIESupported)
check_pie_supported()

add_compile_options(-Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
if(CMAKE_CXX_COMPILER_ID MATCHES Clang)
    add_compile_options(-Wthread-safety)
elseif(CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    add_compile_options(-Wno-restrict) # cries wolf over adding two strings (GCC bug 105651)
endif()
set(CMAKE_CXX_FLAGS_RELEASE "-O2 -DNDEBUG")
if(APPLE)
    set(CMAKE_OBJCXX_FLAGS_RELEASE ${CMAKE_CXX_FLAGS_RELEASE})
    add_compile_options($<$<COMPILE_LANGUAGE:OBJCXX>:-fobjc-arc>)
endif()

# Paths in messages and in std::source_location start at the root of the tree.
add_compile_options(-ffile-prefix-map=${PROJECT_SOURCE_DIR}/=)

if(CORBEL_SANITIZERS)
    add_compile_options(-fsanitize=${CORBEL_SANITIZERS} -fno-sanitize-recover=all
                        -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${CORBEL_SANITIZERS})
endif()
if(CORBEL_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()
if(CORBEL_HARDENED AND APPLE)
    add_compile_options(-fstack-protector-strong -D_FORTIFY_SOURCE=2
                        $<IF:$<CXX_COMPILER_ID:AppleClang>,-D_LIBCPP_HARDENING_MODE=_LIBCPP_HARDENING_MODE_FAST,-D_LIBCPP_ENABLE_HARDENED_MODE=1>)
elseif(CORBEL_HARDENED)
    add_compile_options(-fstack-protector-strong -fstack-clash-protection -U_FORTIFY_SOURCE
                        -D_FORTIFY_SOURCE=3 -D_GLIBCXX_ASSERTIONS -ffunction-sections
                        -fdata-sections)
    add_link_options(-Wl,-z,relro,-z,now,-z,noexecstack,--gc-sections,--as-needed)
endif()

# Parses the headers once for the target instead of once for each of its files. Not in every build: the
# others show which file lacks an include of its own.
function(corbel_precompile target)
    if(CORBEL_PRECOMPILE)
        target_precompile_headers(${target} PRIVATE ${ARGN})
        get_target_property(objects ${target} SOURCES)
        list(FILTER objects INCLUDE REGEX "\\.mm$") # what GNUstep declares beside the compiler goes into none
        set_source_files_properties(${objects} TARGET_DIRECTORY ${target} PROPERTIES SKIP_PRECOMPILE_HEADERS ON)
        if(CMAKE_CXX_COMPILER_ID MATCHES Clang)
            target_compile_options(${target} PRIVATE -Xclang -fno-pch-timestamp) # or no cache serves it
        endif()
    endif()
endfunction()
set(corbel_common_headers <algorithm> <chrono> <filesystem> <functional> <map> <memory> <mutex> <optional>
                          <string> <variant> <vector>)
