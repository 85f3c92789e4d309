# corbel_add_kit_resources(<program>): has the program find the kit's texts wherever it is moved. On Linux
# it does so by itself, since the library holds them; on macOS the kit's bundle is copied to where the
# program looks first, beside it or into its own bundle.
function(corbel_add_kit_resources program)
    if(NOT APPLE)
        return()
    endif()
    get_target_property(kit_bundle CorbelKit::CorbelKit CORBEL_KIT_BUNDLE)
    set(folder "$<TARGET_FILE_DIR:${program}>")
    get_target_property(is_bundle ${program} MACOSX_BUNDLE)
    if(is_bundle)
        set(folder "$<TARGET_BUNDLE_CONTENT_DIR:${program}>/Frameworks")
    endif()
    add_custom_command(TARGET ${program} POST_BUILD VERBATIM
        COMMAND ${CMAKE_COMMAND} -E copy_directory "${kit_bundle}" "${folder}/CorbelKit.framework")
endfunction()
