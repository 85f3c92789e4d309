# What the system itself brings along for the services of Platform/; nothing above may use it.
find_package(EXPAT REQUIRED)
set(frameworks AppKit Foundation CoreFoundation CoreServices ServiceManagement UserNotifications)
list(TRANSFORM frameworks PREPEND "-framework ")

target_compile_options(Platform PRIVATE $<$<COMPILE_LANGUAGE:OBJCXX>:-fobjc-arc -fblocks>)
target_link_libraries(Platform PRIVATE ${frameworks} objc EXPAT::EXPAT)
# Classes that are only found by their names are in the program all the same.
target_link_options(Platform INTERFACE LINKER:-ObjC)
set(PLATFORM_LINKS PACKAGES EXPAT FLAGS ${frameworks} -lobjc -lexpat -Wl,-ObjC)
