# Where the things in the bundle stand on Linux.
set(bundle_executables Contents/Linux)
set(bundle_kit_resources Contents/Frameworks/CorbelKit.framework/Resources)
set(bundle_foreign_resources "\\.storyboard$")

function(corbel_describe_bundle bundle)
    configure_file(${PROJECT_SOURCE_DIR}/Packaging/Linux/Info.plist.in "${bundle}/Contents/Info.plist" @ONLY)
endfunction()
