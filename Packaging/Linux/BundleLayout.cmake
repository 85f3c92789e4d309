# Where the things in the bundles stand on Linux.
set(bundle_executables Contents/Linux)
set(kit_bundle_resources Resources)
set(kit_bundle_foreign_resources "\\.storyboard$")

function(corbel_describe_bundle bundle)
    configure_file(${PROJECT_SOURCE_DIR}/Packaging/Linux/Info.plist.in "${bundle}/Contents/Info.plist" @ONLY)
endfunction()

function(corbel_describe_kit_bundle bundle)
endfunction()

# corbel_link_kit_bundle(<target>): programs with the library have the kit's resources in themselves, as
# GResource under the URL in CORBEL_KIT_BUNDLE. Since nothing refers to them by name, the linker is asked
# to take them in; corbelKitResources in KIT_BUNDLE_FLAGS.
set(KIT_BUNDLE_FLAGS -Wl,--undefined=corbelKitResources)
function(corbel_link_kit_bundle target)
    find_program(GLIB_COMPILE_RESOURCES glib-compile-resources REQUIRED)
    set(source ${PROJECT_SOURCE_DIR}/CorbelKit/Resources)
    set(made ${PROJECT_BINARY_DIR}/KitResources)
    corbel_list_kit_resources(files)
    list(TRANSFORM files REPLACE "(.+)" "    <file>\\1</file>" OUTPUT_VARIABLE entries)
    list(JOIN entries "\n" entries)
    set(prefix /com/tarnwell/CorbelKit.framework)
    file(CONFIGURE OUTPUT ${made}.xml @ONLY CONTENT
         "<gresources>\n  <gresource prefix=\"@prefix@\">\n@entries@\n  </gresource>\n</gresources>\n")
    # What is generated is C.
    file(CONFIGURE OUTPUT ${made}.cpp CONTENT
         "#include <gio/gio.h>\nextern \"C\" {\nextern const char corbelKitResources;\nconst char corbelKitResources = 0;\n#include \"KitResources.inc\"\n}\n")
    list(TRANSFORM files PREPEND ${source}/)
    add_custom_command(OUTPUT ${made}.inc VERBATIM DEPENDS ${made}.xml ${files}
        COMMAND ${GLIB_COMPILE_RESOURCES} --sourcedir=${source} --target=${made}.inc --generate-source
                --internal --c-name corbelKit ${made}.xml)
    target_sources(${target} PRIVATE ${made}.cpp)
    set_source_files_properties(${made}.cpp PROPERTIES OBJECT_DEPENDS ${made}.inc COMPILE_OPTIONS -w
        SKIP_PRECOMPILE_HEADERS ON INCLUDE_DIRECTORIES "${CorbelPlatform_INCLUDE_DIRS}")
    target_link_options(${target} INTERFACE ${KIT_BUNDLE_FLAGS})
    set_property(SOURCE Services/ResourceBundle.cpp APPEND PROPERTY
                 COMPILE_DEFINITIONS "CORBEL_KIT_BUNDLE=\"resource://${prefix}\"")
endfunction()
