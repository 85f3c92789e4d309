# Builds for this machine against the libc++ of the macOS build, so that the portable code can be run
# with it. The C library and the desktop's libraries, which are C as well, are this machine's own.
include(${CMAKE_CURRENT_LIST_DIR}/Installation.cmake)
corbel_find_runtime(linux runtime)

set(CMAKE_CXX_COMPILER clang++-19)
set(headers ${CORBEL_TOOLCHAIN}/zig/lib)
# The definitions are those that zig builds the library with.
string(CONCAT CMAKE_CXX_FLAGS_INIT
    "-nostdinc++ -isystem ${headers}/libcxx/include -isystem ${headers}/libcxxabi/include "
    "-D_LIBCPP_ABI_VERSION=1 -D_LIBCPP_ABI_NAMESPACE=__1 -D_LIBCPP_DISABLE_VISIBILITY_ANNOTATIONS "
    "-D_LIBCPP_HAS_NO_VENDOR_AVAILABILITY_ANNOTATIONS -D_LIBCPP_PSTL_CPU_BACKEND_SERIAL")
set(CMAKE_EXE_LINKER_FLAGS_INIT "-nostdlib++")
set(CMAKE_CXX_STANDARD_LIBRARIES "${runtime}/libc++.a ${runtime}/libc++abi.a")
