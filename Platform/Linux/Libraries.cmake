# What the Linux desktop brings along for the services of Platform/; nothing above may use it.
find_package(Threads REQUIRED)
find_package(PkgConfig REQUIRED)
find_package(nlohmann_json REQUIRED)
find_path(ASIO_INCLUDE_DIR asio.hpp REQUIRED)
set(modules gio-2.0 gio-unix-2.0 fontconfig xcb libcrypto expat icu-i18n icu-uc)
pkg_check_modules(CorbelPlatform REQUIRED IMPORTED_TARGET ${modules})

target_include_directories(Platform SYSTEM PRIVATE ${ASIO_INCLUDE_DIR})
target_compile_definitions(Platform PRIVATE ASIO_STANDALONE ASIO_NO_DEPRECATED)
target_link_libraries(Platform PRIVATE PkgConfig::CorbelPlatform Threads::Threads
                                       $<BUILD_INTERFACE:nlohmann_json::nlohmann_json>)
set(PLATFORM_LINKS PACKAGES Threads MODULES ${modules} FLAGS -pthread)
