target_compile_options(CorbelKitInterface PRIVATE $<$<COMPILE_LANGUAGE:OBJCXX>:-fobjc-arc -fblocks>)
target_link_libraries(CorbelKitInterface PRIVATE "-framework AppKit" "-weak_framework Symbols")
set(INTERFACE_LINKS FLAGS "-framework AppKit" "-weak_framework Symbols")
