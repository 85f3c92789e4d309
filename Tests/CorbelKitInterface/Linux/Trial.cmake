# What the tests run as a process, on a desktop of their own.
add_executable(interface-trial Trial/InterfaceTrial.cpp)
target_link_libraries(interface-trial PRIVATE CorbelKitInterface TestSupport PkgConfig::CorbelKitInterface)
target_compile_definitions(InterfaceTests PRIVATE
    CORBEL_INTERFACE_TRIAL="$<TARGET_FILE:interface-trial>"
    CORBEL_KIT_RESOURCES="${PROJECT_SOURCE_DIR}/CorbelKit/Resources")
add_dependencies(InterfaceTests interface-trial)
