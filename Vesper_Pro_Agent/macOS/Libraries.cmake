target_compile_options(Vesper_Pro_Agent PRIVATE $<$<COMPILE_LANGUAGE:OBJCXX>:-fobjc-arc -fblocks>)
