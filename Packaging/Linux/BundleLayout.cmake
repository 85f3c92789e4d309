# Where the things in the bundles stand on Linux.
set(bundle_executables Contents/Linux)
set(kit_bundle_resources Resources)
set(kit_bundle_foreign_resources "\\.storyboard$")

function(corbel_describe_bundle bundle)
    configure_file(${PROJECT_SOURCE_DIR}/Packaging/Linux/Info.plist.in "${bundle}/Contents/Info.plist" @ONLY)
endfunction()

function(corbel_describe_kit_bundle bundle)
endfunction()
