# Makes the kit's bundle, which holds its resources: the agent has one in its own bundle, and there is
# one for all other programs.
function(corbel_make_kit_bundle bundle)
    set(resources ${PROJECT_SOURCE_DIR}/CorbelKit/Resources)
    file(GLOB_RECURSE files CONFIGURE_DEPENDS RELATIVE ${resources} ${resources}/*)
    list(FILTER files EXCLUDE REGEX "${kit_bundle_foreign_resources}")
    foreach(file IN LISTS files)
        configure_file(${resources}/${file} "${bundle}/${kit_bundle_resources}/${file}" COPYONLY)
    endforeach()
    corbel_describe_kit_bundle("${bundle}")
endfunction()
