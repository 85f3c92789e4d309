find_package(PkgConfig REQUIRED)
find_package(Threads REQUIRED)
pkg_check_modules(GIO REQUIRED IMPORTED_TARGET gio-2.0)
target_link_libraries(TestSupport PRIVATE PkgConfig::GIO Threads::Threads)

# Preloaded into the process whose system log is to be read.
add_library(SystemLogRecorder MODULE Linux/Preloaded/SystemLogRecorder.cpp)

target_sources(TestSupport INTERFACE ${CMAKE_CURRENT_SOURCE_DIR}/Linux/SanitizerSuppressions.cpp)

# Run as a process of its own by those who test connections to one.
add_executable(HelperTool Linux/Programs/HelperTool.cpp)
target_link_libraries(HelperTool PRIVATE PkgConfig::GIO)
add_dependencies(TestSupport HelperTool)

# Stands in for the service manager where a program is to be run under the filter of its unit.
pkg_check_modules(SECCOMP IMPORTED_TARGET libseccomp)
if(SECCOMP_FOUND)
    add_executable(Confine Linux/Programs/Confine.cpp)
    target_link_libraries(Confine PRIVATE PkgConfig::SECCOMP TestSupport)
endif()
