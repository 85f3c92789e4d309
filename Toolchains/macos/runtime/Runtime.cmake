# Has the macOS back end built for this machine, to be run: over the Objective-C runtime, the queues and the
# Foundation that `build` made (CORBEL_MACOS_RUNTIME), the headers of `include` and the stand-ins of this folder.
# The preset macos-runtime includes this behind `project`.
if(NOT EXISTS "${CORBEL_MACOS_RUNTIME}/include/Foundation/Foundation.h")
    message(FATAL_ERROR "There is no runtime: Scripts/check-macos-runtime builds it")
endif()
set(CMAKE_OBJCXX_COMPILER ${CMAKE_CXX_COMPILER})
set(CORBEL_TEST_TIMEOUT 90 CACHE STRING "Seconds after which a test has failed") # a run loop that hangs is no rare one
string(APPEND CMAKE_OBJCXX_FLAGS
    " -fobjc-runtime=gnustep-2.1 -fblocks -fobjc-exceptions -fexceptions -fconstant-string-class=NSConstantString"
    " -DGNUSTEP -DGNUSTEP_BASE_LIBRARY=1 -DGNUSTEP_RUNTIME=1 -D_NONFRAGILE_ABI=1 -D_NATIVE_OBJC_EXCEPTIONS"
    # A class that takes the place of one of a framework, and a literal of the framework's, are called by name.
    " -Wno-objc-protocol-method-implementation")
# In this order: what the frameworks' headers have and GNUstep's have not, GNUstep's, and the declarations of
# the frameworks that GNUstep has nothing of.
set(CMAKE_OBJCXX_STANDARD_INCLUDE_DIRECTORIES
    ${CMAKE_CURRENT_LIST_DIR}/include ${CORBEL_MACOS_RUNTIME}/include ${CMAKE_CURRENT_LIST_DIR}/../stubsdk/include)
string(APPEND CMAKE_EXE_LINKER_FLAGS
    " --ld-path=${CMAKE_CURRENT_LIST_DIR}/ld -L${CORBEL_MACOS_RUNTIME}/lib -Wl,-rpath,${CORBEL_MACOS_RUNTIME}/lib -lobjc")
