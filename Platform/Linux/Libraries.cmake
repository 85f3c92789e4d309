# What the Linux desktop brings along for the services of Platform/; nothing above may use it.
find_package(Threads REQUIRED)
find_package(PkgConfig REQUIRED)
find_package(OpenSSL REQUIRED COMPONENTS Crypto)
find_package(EXPAT REQUIRED)
find_package(ICU REQUIRED COMPONENTS uc i18n)
find_package(nlohmann_json REQUIRED)
pkg_check_modules(GIO REQUIRED IMPORTED_TARGET gio-2.0 gio-unix-2.0)
pkg_check_modules(FONTCONFIG REQUIRED IMPORTED_TARGET fontconfig)
pkg_check_modules(XCB REQUIRED IMPORTED_TARGET xcb)
find_path(ASIO_INCLUDE_DIR asio.hpp REQUIRED)

add_library(Asio INTERFACE)
target_include_directories(Asio SYSTEM INTERFACE ${ASIO_INCLUDE_DIR})
target_compile_definitions(Asio INTERFACE ASIO_STANDALONE ASIO_NO_DEPRECATED)

target_link_libraries(Platform PRIVATE Asio PkgConfig::FONTCONFIG PkgConfig::GIO PkgConfig::XCB
                                       OpenSSL::Crypto EXPAT::EXPAT ICU::i18n ICU::uc
                                       nlohmann_json::nlohmann_json Threads::Threads)
