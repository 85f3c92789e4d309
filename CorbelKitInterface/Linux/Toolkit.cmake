# A machine set up for running the agent alone, which has no windows, does without.
find_package(PkgConfig REQUIRED)
pkg_check_modules(CorbelKitInterface IMPORTED_TARGET GLOBAL gtkmm-4.0)
set(CORBEL_INTERFACE_TOOLKIT_FOUND ${CorbelKitInterface_FOUND})
if(NOT CorbelKitInterface_FOUND)
    message(WARNING "gtkmm-4.0 is not installed: the kit is built without its windows (the component Interface)")
endif()
