# The kit as a package that other projects build with. Each of its libraries is put into it by one call.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)
include(${CMAKE_CURRENT_LIST_DIR}/Resources.cmake)

set(kit_headers ${CMAKE_INSTALL_INCLUDEDIR}/CorbelKit-${PROJECT_VERSION_MAJOR})
set(kit_package ${CMAKE_INSTALL_LIBDIR}/cmake/CorbelKit)
set(kit_data ${CMAKE_INSTALL_DATADIR}/CorbelKit)
add_custom_target(kit) # all that is installed

# corbel_package_library(<target> AS <name> DESCRIPTION <text> HEADERS <file>...
#                        [REQUIRES <library>...] [PACKAGES <package>...] [MODULES <module>...] [FLAGS <flag>...])
# Others know the library as CorbelKit::<name>, here and where it is installed, and by pkg-config under
# the name of its file. Since it is static, what it links is told for those who link it: REQUIRES,
# the package's other libraries, by their files; PACKAGES, what CMake finds; MODULES, what pkg-config
# finds, linked here as PkgConfig::<name of the file>; FLAGS, for pkg-config, what neither names.
# HEADERS are its public ones, seen by those who link it and installed.
# A library whose file is named CorbelKit<name> is the component <name> of the package.
function(corbel_package_library target)
    cmake_parse_arguments(PARSE_ARGV 1 ARG "" "AS;DESCRIPTION" "HEADERS;REQUIRES;PACKAGES;MODULES;FLAGS")
    add_library(CorbelKit::${ARG_AS} ALIAS ${target})
    target_compile_features(${target} PUBLIC cxx_std_20)
    corbel_add_headers(${target} PUBLIC ${ARG_HEADERS})
    if(NOT PROJECT_IS_TOP_LEVEL)
        return()
    endif()

    get_target_property(name ${target} OUTPUT_NAME)
    if(NOT name)
        set(name ${target})
    endif()
    add_dependencies(kit ${target})
    set_target_properties(${target} PROPERTIES EXPORT_NAME ${ARG_AS})
    install(TARGETS ${target} EXPORT ${name} COMPONENT ${name} INCLUDES DESTINATION ${kit_headers})
    foreach(header IN LISTS ARG_HEADERS)
        cmake_path(GET header PARENT_PATH folder)
        cmake_path(RELATIVE_PATH folder BASE_DIRECTORY ${PROJECT_SOURCE_DIR})
        install(FILES ${header} DESTINATION ${kit_headers}/${folder} COMPONENT ${name})
    endforeach()
    install(EXPORT ${name} NAMESPACE CorbelKit:: FILE ${name}Targets.cmake
            DESTINATION ${kit_package} COMPONENT ${name})
    list(JOIN ARG_HEADERS "\n" headers)
    file(GENERATE OUTPUT ${PROJECT_BINARY_DIR}/Package/${name}.headers CONTENT "${headers}\n") # for the reference

    list(TRANSFORM ARG_PACKAGES REPLACE "(.+)" "find_dependency(\\1)" OUTPUT_VARIABLE find_packages)
    list(JOIN find_packages "\n" find_packages)
    set_property(GLOBAL PROPERTY corbel_modules_of_${name} ${ARG_MODULES})
    list(JOIN ARG_MODULES " " modules)
    configure_file(${PROJECT_SOURCE_DIR}/Packaging/Kit/Dependencies.cmake.in
                   ${PROJECT_BINARY_DIR}/Package/${name}Dependencies.cmake @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/Package/${name}Dependencies.cmake
            DESTINATION ${kit_package} COMPONENT ${name})

    set(description ${ARG_DESCRIPTION})
    list(JOIN ARG_FLAGS " " flags)
    list(TRANSFORM ARG_REQUIRES APPEND " = ${PROJECT_VERSION}")
    list(JOIN ARG_REQUIRES ", " requires)
    string(JOIN ", " requires ${ARG_REQUIRES} ${ARG_MODULES})
    string(REGEX REPLACE "[^/]+" ".." prefix ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
    configure_file(${PROJECT_SOURCE_DIR}/Packaging/Kit/Library.pc.in
                   ${PROJECT_BINARY_DIR}/Package/${name}.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/Package/${name}.pc
            DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT ${name})
endfunction()

if(PROJECT_IS_TOP_LEVEL)
    configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/CorbelKitConfig.cmake.in
        ${PROJECT_BINARY_DIR}/Package/CorbelKitConfig.cmake
        INSTALL_DESTINATION ${kit_package} PATH_VARS kit_data)
    write_basic_package_version_file(${PROJECT_BINARY_DIR}/Package/CorbelKitConfigVersion.cmake
        COMPATIBILITY SameMajorVersion)
    install(FILES ${PROJECT_BINARY_DIR}/Package/CorbelKitConfig.cmake
                  ${PROJECT_BINARY_DIR}/Package/CorbelKitConfigVersion.cmake
            DESTINATION ${kit_package} COMPONENT CorbelKit)
    install(FILES ${CMAKE_CURRENT_LIST_DIR}/Resources.cmake RENAME CorbelKitResources.cmake
            DESTINATION ${kit_package} COMPONENT CorbelKit)
endif()
