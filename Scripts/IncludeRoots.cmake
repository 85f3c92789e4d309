# Include roots. A file of this tree is included by its path from the root of the tree, and a target sees
# the headers that it was given, its own and those that its libraries show, and no others: an include
# root is a folder of the build in which a file of one line, which includes the header, stands for each.
# (A link would do as well, but compilers, debuggers and caches would then know one header by several paths.)

set(CORBEL_INCLUDE_FOLDER ${CMAKE_BINARY_DIR}/CorbelIncludes CACHE PATH "Where the include roots are made")

# corbel_make_include_root(<variable> <name> <header>...): sets the variable to a folder from which the
# headers, and nothing else, can be included.
function(corbel_make_include_root variable name)
    set(root ${CORBEL_INCLUDE_FOLDER}/${name})
    file(GLOB_RECURSE leftover ${root}/*)
    foreach(header IN LISTS ARGN)
        cmake_path(ABSOLUTE_PATH header)
        cmake_path(RELATIVE_PATH header BASE_DIRECTORY ${PROJECT_SOURCE_DIR} OUTPUT_VARIABLE path)
        file(CONFIGURE OUTPUT ${root}/${path} @ONLY
             CONTENT "#pragma once\n#include \"${header}\" // IWYU pragma: export\n")
        list(REMOVE_ITEM leftover ${root}/${path})
    endforeach()
    if(leftover)
        file(REMOVE ${leftover})
    endif()
    set(${variable} ${root} PARENT_SCOPE)
endfunction()

# corbel_add_headers(<target> PUBLIC|PRIVATE <header>...): what those who link the target see as well, or
# it alone.
function(corbel_add_headers target scope)
    corbel_make_include_root(root ${target}/${scope} ${ARGN})
    target_include_directories(${target} ${scope} $<BUILD_INTERFACE:${root}>)
    if(scope STREQUAL PRIVATE)
        set_property(TARGET ${target} APPEND PROPERTY CORBEL_PRIVATE_ROOTS ${root})
    endif()
endfunction()

# corbel_add_back_end(<target>): compiles what stands for the chosen back end in the current folder. Its
# headers are seen there, and not by the portable part of the target.
function(corbel_add_back_end target)
    file(GLOB_RECURSE files CONFIGURE_DEPENDS
         ${CORBEL_BACK_END}/*.cpp ${CORBEL_BACK_END}/*.mm ${CORBEL_BACK_END}/*.h)
    target_sources(${target} PRIVATE ${files})
    set(headers ${files})
    list(FILTER headers INCLUDE REGEX "\\.h$")
    list(FILTER headers EXCLUDE REGEX "/Public/")
    corbel_make_include_root(root ${target}/${CORBEL_BACK_END} ${headers})
    set_property(SOURCE ${files} APPEND PROPERTY INCLUDE_DIRECTORIES ${root})
    set_property(TARGET ${target} APPEND PROPERTY CORBEL_PRIVATE_ROOTS ${root})
endfunction()

# corbel_see_private_headers(<program> <target>): for tests of what the target keeps to itself.
function(corbel_see_private_headers program target)
    get_target_property(roots ${target} CORBEL_PRIVATE_ROOTS)
    target_include_directories(${program} PRIVATE ${roots})
endfunction()
