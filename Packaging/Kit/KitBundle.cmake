# corbel_list_kit_resources(<variable>): what the kit's bundle holds on this system, by paths within it.
function(corbel_list_kit_resources variable)
    set(resources ${PROJECT_SOURCE_DIR}/CorbelKit/Resources)
    file(GLOB_RECURSE files CONFIGURE_DEPENDS RELATIVE ${resources} ${resources}/*)
    list(FILTER files EXCLUDE REGEX "${kit_bundle_foreign_resources}")
    set(${variable} ${files} PARENT_SCOPE)
endfunction()

# Makes the kit's bundle, which holds its resources: the agent has one in its own bundle.
function(corbel_make_kit_bundle bundle)
    corbel_list_kit_resources(files)
    foreach(file IN LISTS files)
        configure_file(${PROJECT_SOURCE_DIR}/CorbelKit/Resources/${file}
                       "${bundle}/${kit_bundle_resources}/${file}" COPYONLY)
    endforeach()
    corbel_describe_kit_bundle("${bundle}")
endfunction()
