target_link_libraries(CorbelKitInterface PRIVATE PkgConfig::GTKMM)
# Alerts become windows by this library's presence alone: nothing in a program need refer to it.
target_link_options(CorbelKitInterface INTERFACE LINKER:--undefined=corbelKitInterfaceAlerts)
