# Where the things in the bundle stand on macOS: the kit's folder is a versioned framework bundle.
set(bundle_executables Contents/MacOS)
set(bundle_kit Contents/Frameworks/CorbelKit.framework)
set(bundle_kit_resources ${bundle_kit}/Versions/A/Resources)

function(corbel_describe_bundle bundle)
    file(GLOB languages RELATIVE ${PROJECT_SOURCE_DIR}/CorbelKit/Resources
         ${PROJECT_SOURCE_DIR}/CorbelKit/Resources/*.lproj)
    list(TRANSFORM languages REPLACE "(.+)\\.lproj" "\t\t<string>\\1</string>")
    list(JOIN languages "\n" localizations)
    configure_file(${PROJECT_SOURCE_DIR}/Packaging/macOS/Info.plist.in "${bundle}/Contents/Info.plist" @ONLY)
    configure_file(${PROJECT_SOURCE_DIR}/Packaging/macOS/CorbelKit-Info.plist.in
                   "${bundle}/${bundle_kit_resources}/Info.plist" @ONLY)
    file(CREATE_LINK A "${bundle}/${bundle_kit}/Versions/Current" SYMBOLIC)
    file(CREATE_LINK Versions/Current/Resources "${bundle}/${bundle_kit}/Resources" SYMBOLIC)
endfunction()
