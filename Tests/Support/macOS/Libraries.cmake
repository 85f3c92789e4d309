target_link_libraries(TestSupport PRIVATE "-framework CoreFoundation")
