# The Debian packages: the agent; what the kit has for users of any program of it; and the kit for those who
# write one, with and without windows. What such a program links it has in itself, texts and all, so at run
# time it needs no package of the kit.
set(CPACK_GENERATOR DEB)
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
    WORLD_READ WORLD_EXECUTE)
set(CPACK_COMPONENTS_GROUPING ONE_PER_GROUP)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "Tarnwell <support@tarnwell.example>")
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE https://tarnwell.example)

configure_file(${CMAKE_CURRENT_LIST_DIR}/changelog.in ${made}/changelog @ONLY)
corbel_pack(${made}/changelog changelog.gz)

# corbel_debian_package(<package> SECTION <section> COMPONENTS <component>... [DEPENDS ...] [RECOMMENDS ...]
#                       DESCRIPTION <text>)
# The package's own documents belong to the first of the components.
macro(corbel_debian_package package)
    cmake_parse_arguments(ARG "" "SECTION;DEPENDS;RECOMMENDS;DESCRIPTION" "COMPONENTS" ${ARGN})
    string(TOUPPER ${package} group)
    list(GET ARG_COMPONENTS 0 component)
    install(FILES ${CMAKE_CURRENT_LIST_DIR}/copyright ${made}/changelog.gz
            DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package} COMPONENT ${component} EXCLUDE_FROM_ALL)
    foreach(component IN LISTS ARG_COMPONENTS)
        list(APPEND CPACK_COMPONENTS_ALL ${component})
        string(TOUPPER ${component} component)
        set(CPACK_COMPONENT_${component}_GROUP ${package})
    endforeach()
    set(CPACK_COMPONENT_GROUP_${group}_DESCRIPTION "${ARG_DESCRIPTION}")
    set(CPACK_DEBIAN_${group}_PACKAGE_NAME ${package})
    set(CPACK_DEBIAN_${group}_DESCRIPTION "${ARG_DESCRIPTION}")
    set(CPACK_DEBIAN_${group}_PACKAGE_SECTION ${ARG_SECTION})
    set(CPACK_DEBIAN_${group}_PACKAGE_DEPENDS "${ARG_DEPENDS}")
    set(CPACK_DEBIAN_${group}_PACKAGE_RECOMMENDS "${ARG_RECOMMENDS}")
endmacro()

# corbel_packages_of(<library> <variable>): those of this system that have what the library's configuration
# looks for, as a list of dependencies.
function(corbel_packages_of library variable)
    get_property(modules GLOBAL PROPERTY corbel_modules_of_${library})
    set(files)
    foreach(module IN LISTS modules)
        pkg_get_variable(folder ${module} pcfiledir)
        list(APPEND files ${folder}/${module}.pc)
    endforeach()
    execute_process(COMMAND dpkg-query -S ${files} OUTPUT_VARIABLE found ERROR_QUIET)
    string(REGEX MATCHALL "[^\n:]+:[^\n]*\n" found "${found}")
    list(TRANSFORM found REPLACE "[:,].*" "")
    list(REMOVE_DUPLICATES found)
    list(PREPEND found pkg-config)
    list(JOIN found ", " found)
    set(${variable} "${found}" PARENT_SCOPE)
endfunction()

set(same "(= ${PROJECT_VERSION})")
corbel_debian_package(vesper-pro-agent SECTION utils COMPONENTS Programs
    DEPENDS desktop-file-utils # by which the desktop knows who opens the links of notifications
    RECOMMENDS "corbelkit, default-dbus-session-bus | dbus-session-bus, notification-daemon"
    DESCRIPTION "notifies of what arranges to be started by itself
Watches the folders in which software is put to be started by itself, finds
out by content which files are new, modified or deleted, and notifies the user
of each.")
install(FILES ${CMAKE_CURRENT_LIST_DIR}/vesper-pro-agent.lintian-overrides
        DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides RENAME vesper-pro-agent ${of_programs})
set(CPACK_DEBIAN_VESPER-PRO-AGENT_PACKAGE_CONTROL_EXTRA ${made}/conffiles)
file(WRITE ${made}/conffiles "/etc/xdg/autostart/vesper-pro-agent.desktop\n")

corbel_debian_package(corbelkit SECTION utils COMPONENTS KitPrograms
    DESCRIPTION "reads and edits the settings of programs made with CorbelKit
Has corbel-defaults, which reads, writes and deletes settings where such
programs keep theirs. A program that is running follows at once.")

corbel_packages_of(CorbelPlatform packages)
corbel_debian_package(libcorbelkit-dev SECTION libdevel COMPONENTS CorbelKit CorbelPlatform
    DEPENDS "${packages}" RECOMMENDS corbelkit
    DESCRIPTION "monitors, settings, coding and formats that applications share
CorbelKit as a static library, with what CMake and pkg-config know it by: it
watches folders and trees, keeps settings and user data, posts notifications,
and reads and writes property lists, themes and text of any encoding.")

if(TARGET CorbelKitInterface)
    corbel_packages_of(CorbelKitInterface packages)
    corbel_debian_package(libcorbelkit-interface-dev SECTION libdevel COMPONENTS CorbelKitInterface
        DEPENDS "libcorbelkit-dev ${same}, ${packages}"
        DESCRIPTION "windows and alerts of CorbelKit
The part of CorbelKit that draws, as a static library: CMake's component
Interface of the package CorbelKit. An application that links it shows its
alerts in windows.")
endif()
include(CPack)
