# Where the things in the bundle stand on macOS: the kit's folder is a versioned framework bundle.
set(bundle_executables Contents/MacOS)
set(bundle_kit Contents/Frameworks/CorbelKit.framework)
set(bundle_kit_resources ${bundle_kit}/Versions/A/Resources)
set(bundle_foreign_resources "\\.(css|storyboard|svg|ui)$")

function(corbel_describe_bundle bundle)
    file(GLOB languages RELATIVE ${PROJECT_SOURCE_DIR}/CorbelKit/Resources
         ${PROJECT_SOURCE_DIR}/CorbelKit/Resources/*.lproj)
    list(TRANSFORM languages REPLACE "(.+)\\.lproj" "\t\t<string>\\1</string>")
    list(JOIN languages "\n" localizations)
    configure_file(${PROJECT_SOURCE_DIR}/Packaging/macOS/Info.plist.in "${bundle}/Contents/Info.plist" @ONLY)
    configure_file(${PROJECT_SOURCE_DIR}/Packaging/macOS/CorbelKit-Info.plist.in
                   "${bundle}/${bundle_kit_resources}/Info.plist" @ONLY)
    corbel_compile_storyboards("${bundle}/${bundle_kit_resources}")
    file(CREATE_LINK A "${bundle}/${bundle_kit}/Versions/Current" SYMBOLIC)
    file(CREATE_LINK Versions/Current/Resources "${bundle}/${bundle_kit}/Resources" SYMBOLIC)
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
