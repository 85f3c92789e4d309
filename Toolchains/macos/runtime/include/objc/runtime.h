#pragma once
#include_next <objc/runtime.h>

/// Called by class_getImageName: <objc/runtime.h> of macOS 10.14 and later.
typedef BOOL (*objc_hook_getImageName)(Class aClass, const char** imageName);
OBJC_PUBLIC extern "C" void objc_setHook_getImageName(objc_hook_getImageName hook,
                                                      objc_hook_getImageName* previous);
/// The path of what the class comes from.
OBJC_PUBLIC extern "C" const char* class_getImageName(Class aClass);
