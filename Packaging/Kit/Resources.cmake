# corbel_add_kit_resources(<program>): copies the kit's bundle, with its texts in all languages, to where
# the program looks first, so that the two can be moved together: beside the program, or into its own
# bundle. A program that stays on a machine with the kit installed under its own prefix needs no copy.
function(corbel_add_kit_resources program)
    get_target_property(kit_bundle CorbelKit::CorbelKit CORBEL_KIT_BUNDLE)
    set(folder "$<TARGET_FILE_DIR:${program}>")
    get_target_property(is_bundle ${program} MACOSX_BUNDLE)
    if(APPLE AND is_bundle)
        set(folder "$<TARGET_BUNDLE_CONTENT_DIR:${program}>/Frameworks")
    endif()
    add_custom_command(TARGET ${program} POST_BUILD VERBATIM
        COMMAND ${CMAKE_COMMAND} -E copy_directory "${kit_bundle}" "${folder}/CorbelKit.framework")
endfunction()
