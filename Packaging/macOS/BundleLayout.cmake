# Where the things in the bundles stand on macOS: the kit's folder is a versioned framework bundle.
set(bundle_executables Contents/MacOS)
set(kit_bundle_resources Versions/A/Resources)
set(kit_bundle_foreign_resources "\\.(css|storyboard|svg|ui)$")

function(corbel_describe_bundle bundle)
    file(GLOB languages RELATIVE ${PROJECT_SOURCE_DIR}/CorbelKit/Resources
         ${PROJECT_SOURCE_DIR}/CorbelKit/Resources/*.lproj)
    list(TRANSFORM languages REPLACE "(.+)\\.lproj" "\t\t<string>\\1</string>")
    list(JOIN languages "\n" localizations)
    configure_file(${PROJECT_SOURCE_DIR}/Packaging/macOS/Info.plist.in "${bundle}/Contents/Info.plist" @ONLY)
    corbel_draw_icon("${bundle}/Contents/Resources/com.tarnwell.VesperPro10.icns")
endfunction()

# The system shows it with notifications. Without the program that draws it, the bundle has none.
function(corbel_draw_icon icon)
    find_program(RSVG_CONVERT rsvg-convert)
    set(drawing ${PROJECT_SOURCE_DIR}/Packaging/Icons/com.tarnwell.VesperPro10.svg)
    set(maker ${PROJECT_SOURCE_DIR}/Packaging/macOS/make_icon.py)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${drawing} ${maker})
    if(RSVG_CONVERT AND ("${drawing}" IS_NEWER_THAN "${icon}" OR "${maker}" IS_NEWER_THAN "${icon}"))
        execute_process(COMMAND python3 ${maker} ${RSVG_CONVERT} ${drawing} "${icon}" COMMAND_ERROR_IS_FATAL ANY)
    endif()
endfunction()

function(corbel_describe_kit_bundle bundle)
    configure_file(${PROJECT_SOURCE_DIR}/Packaging/macOS/CorbelKit-Info.plist.in
                   "${bundle}/${kit_bundle_resources}/Info.plist" @ONLY)
    corbel_compile_storyboards("${bundle}/${kit_bundle_resources}")
    file(CREATE_LINK A "${bundle}/Versions/Current" SYMBOLIC)
    file(CREATE_LINK Versions/Current/Resources "${bundle}/Resources" SYMBOLIC)
endfunction()

# Which only Xcode can; a bundle that was made without it has none of the kit's windows.
function(corbel_compile_storyboards destination)
    find_program(CORBEL_IBTOOL ibtool)
    if(NOT CORBEL_IBTOOL)
        return()
    endif()
    file(GLOB storyboards ${PROJECT_SOURCE_DIR}/CorbelKit/Resources/*.storyboard)
    foreach(storyboard IN LISTS storyboards)
        cmake_path(GET storyboard STEM name)
        execute_process(COMMAND ${CORBEL_IBTOOL} --compile ${destination}/${name}.storyboardc ${storyboard}
                        COMMAND_ERROR_IS_FATAL ANY)
    endforeach()
endfunction()

# corbel_link_kit_bundle(<target>): programs with the library find the kit's bundle in this tree when it
# is part of theirs, else where the kit was meant to be installed.
function(corbel_link_kit_bundle target)
    set(bundle ${PROJECT_BINARY_DIR}/CorbelKit.framework)
    corbel_make_kit_bundle(${bundle})
    set_target_properties(${target} PROPERTIES CORBEL_KIT_BUNDLE ${bundle})
    set(place ${bundle})
    if(PROJECT_IS_TOP_LEVEL)
        set(place ${CMAKE_INSTALL_FULL_DATADIR}/CorbelKit/CorbelKit.framework)
        install(DIRECTORY ${bundle} DESTINATION ${kit_data} COMPONENT CorbelKit)
    endif()
    set_property(SOURCE Services/ResourceBundle.cpp APPEND PROPERTY
                 COMPILE_DEFINITIONS "CORBEL_KIT_BUNDLE=\"${place}\"")
endfunction()
