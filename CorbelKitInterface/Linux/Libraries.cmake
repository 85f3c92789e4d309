# Alerts become windows by this library's presence alone: nothing in a program need refer to it.
set(link_alerts -Wl,--undefined=corbelKitInterfaceAlerts)
target_link_libraries(CorbelKitInterface PRIVATE PkgConfig::CorbelKitInterface)
target_link_options(CorbelKitInterface INTERFACE ${link_alerts})
set(INTERFACE_LINKS MODULES gtkmm-4.0 FLAGS ${link_alerts})
