# Where the things in the bundles stand on Linux.
set(bundle_executables Contents/Linux)
set(kit_bundle_resources Resources)
set(kit_bundle_foreign_resources "\\.storyboard$")

function(corbel_describe_bundle bundle)
    configure_file(${PROJECT_SOURCE_DIR}/Packaging/Linux/Info.plist.in "${bundle}/Contents/Info.plist" @ONLY)
endfunction()

function(corbel_describe_kit_bundle bundle)
endfunction()

# corbel_link_resources(<target> <name> <prefix> <folder> <file>...): programs with the library have the
# folder's files in themselves, as GResource under the prefix. Since nothing refers to them by name, the
# linker is asked to take them in, by the symbol <name>Resources.
function(corbel_link_resources target name prefix folder)
    find_program(GLIB_COMPILE_RESOURCES glib-compile-resources REQUIRED)
    set(made ${CMAKE_CURRENT_BINARY_DIR}/${name}Resources)
    set(files ${ARGN})
    list(TRANSFORM files REPLACE "(.+)" "    <file>\\1</file>" OUTPUT_VARIABLE entries)
    list(JOIN entries "\n" entries)
    file(CONFIGURE OUTPUT ${made}.xml @ONLY CONTENT
         "<gresources>\n  <gresource prefix=\"@prefix@\">\n@entries@\n  </gresource>\n</gresources>\n")
    # What is generated is C.
    file(CONFIGURE OUTPUT ${made}.cpp CONTENT
         "#include <gio/gio.h>\nextern \"C\" {\nextern const char ${name}Resources;\nconst char ${name}Resources = 0;\n#include \"${name}Resources.inc\"\n}\n")
    list(TRANSFORM files PREPEND ${folder}/)
    add_custom_command(OUTPUT ${made}.inc VERBATIM DEPENDS ${made}.xml ${files}
        COMMAND ${GLIB_COMPILE_RESOURCES} --sourcedir=${folder} --target=${made}.inc --generate-source
                --internal --c-name ${name} ${made}.xml)
    target_sources(${target} PRIVATE ${made}.cpp)
    set_source_files_properties(${made}.cpp PROPERTIES OBJECT_DEPENDS ${made}.inc COMPILE_OPTIONS -w
        SKIP_PRECOMPILE_HEADERS ON INCLUDE_DIRECTORIES "${CorbelPlatform_INCLUDE_DIRS}")
    target_link_options(${target} INTERFACE -Wl,--undefined=${name}Resources)
endfunction()

# corbel_link_kit_bundle(<target>): the kit's resources, under the URL in CORBEL_KIT_BUNDLE; corbelKitResources
# in KIT_BUNDLE_FLAGS.
set(KIT_BUNDLE_FLAGS -Wl,--undefined=corbelKitResources)
function(corbel_link_kit_bundle target)
    corbel_list_kit_resources(files)
    set(prefix /com/tarnwell/CorbelKit.framework)
    corbel_link_resources(${target} corbelKit ${prefix} ${PROJECT_SOURCE_DIR}/CorbelKit/Resources ${files})
    set_property(SOURCE Services/ResourceBundle.cpp APPEND PROPERTY
                 COMPILE_DEFINITIONS "CORBEL_KIT_BUNDLE=\"resource://${prefix}\"")
endfunction()
