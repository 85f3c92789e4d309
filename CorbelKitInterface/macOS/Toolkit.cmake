# AppKit is part of the system.
set(CORBEL_INTERFACE_TOOLKIT_FOUND TRUE)
