# What the Linux desktop brings along for the services of Platform/; nothing above may use it.
find_package(Threads REQUIRED)
find_package(PkgConfig REQUIRED)
find_path(ASIO_INCLUDE_DIR asio.hpp REQUIRED)
set(modules gio-2.0 gio-unix-2.0 libsystemd fontconfig xcb libcrypto expat icu-i18n icu-uc)
pkg_check_modules(CorbelPlatform REQUIRED IMPORTED_TARGET ${modules})

target_include_directories(Platform SYSTEM PRIVATE ${ASIO_INCLUDE_DIR})
# One configuration for every file. Asio would find aligned allocation only where a standard header is
# included before it; one file would then free by `free` what another has by `operator new`. And a name
# of our own, so that the linker takes nothing of another Asio, that of the program, for ours.
target_compile_definitions(Platform PRIVATE ASIO_STANDALONE ASIO_NO_DEPRECATED ASIO_HAS_STD_ALIGNED_ALLOC
                                            asio=corbelAsio
                                            asio_detail_posix_thread_function=corbelAsioThreadFunction)
target_link_libraries(Platform PRIVATE PkgConfig::CorbelPlatform Threads::Threads)
set(PLATFORM_LINKS PACKAGES Threads MODULES ${modules} FLAGS -pthread)
